#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

namespace {

// Design pixels on the display that the test's environment asks for.
int scaled(int designPixels)
{
    return designPixels * qEnvironmentVariableIntValue("QT_FONT_DPI") / 96;
}

// The darkness of the darkest pixel away from the frame, of 255.
int darkest(QWidget *widget)
{
    const QImage image = widget->grab().toImage();
    int least = 255;
    for (int y = 6; y < image.height() - 6; ++y) {
        for (int x = 6; x < image.width() / 2; ++x)
            least = qMin(least, qGray(image.pixel(x, y)));
    }
    return 255 - least;
}

int rightOf(const QWidget *widget)
{
    return widget->geometry().right() + 1;
}

} // namespace

// What forms are made of: line edits with labels, labels by themselves, the bar at the foot.
class FormControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void lineEditLaysOutARow();
    void lineEditValidatesWhenAsked();
    void errorComesAndGoes();
    void errorIsTold();
    void labelsLeadIntoTheField_data();
    void labelsLeadIntoTheField();
    void placeholdersAreWeakerThanText();
    void labelGrowsAndShrinksWithItsText();
    void labelKeepsItsMinimumHeight();
    void footbarKeepsItsGroupsApart();
};

void FormControlsTest::lineEditLaysOutARow()
{
    KovaLineEdit edit;
    edit.getPreLabel()->setText("Port");
    edit.getPostLabel()->setText("TCP");
    edit.show();
    QCOMPARE(edit.getPreLabel()->x(), 0);
    QCOMPARE(edit.getLineEdit()->x(), rightOf(edit.getPreLabel()));
    QCOMPARE(edit.getPostLabel()->x(), rightOf(edit.getLineEdit()));

    edit.setMargins(5, 3, 7, 9);
    edit.setSpacing(3);
    edit.adjustSize();
    QCOMPARE(edit.getPreLabel()->x(), scaled(5));
    QCOMPARE(edit.getLineEdit()->x(), rightOf(edit.getPreLabel()) + scaled(3));
    QCOMPARE(edit.width(), rightOf(edit.getPostLabel()) + scaled(7));
    QCOMPARE(edit.layout()->contentsMargins().bottom(), scaled(9));
}

void FormControlsTest::lineEditValidatesWhenAsked()
{
    KovaLineEdit edit;
    QVERIFY(edit.validate());
    edit.setValidator([](const QString &text) { return text.toInt() > 0; });
    QVERIFY(!edit.validate());
    QVERIFY(!edit.getLineEdit()->property("error").isValid());
    edit.getLineEdit()->setText("8080");
    QVERIFY(edit.validate());
    edit.getLineEdit()->setText("http");
    QVERIFY(!edit.validate());
    edit.setValidator(nullptr);
    QVERIFY(edit.validate());
}

void FormControlsTest::errorComesAndGoes()
{
    KovaLineEdit edit;
    showActive(&edit);
    const QImage right = edit.grab().toImage();
    edit.setError(true);
    const QImage wrong = edit.grab().toImage();
    QVERIFY(right != wrong);
    edit.setError(false);
    QCOMPARE(edit.grab().toImage(), right);
    QCOMPARE(edit.getLineEdit()->property("error"), QVariant(false));
    edit.setError(true);
    QCOMPARE(edit.grab().toImage(), wrong);
}

void FormControlsTest::errorIsTold()
{
    KovaLineEdit edit;
    QLineEdit *field = edit.getLineEdit();
    const auto description = [field] { return spoken(field, QAccessible::Description); };
    edit.setError(true);
    edit.setError(true);
    QCOMPARE(description(), "⚠");
    edit.setError(false);
    QCOMPARE(description(), "");

    field->setAccessibleDescription("From 1 to 65535");
    edit.setError(true);
    QCOMPARE(description(), "⚠ From 1 to 65535");
    edit.setError(false);
    QCOMPARE(description(), "From 1 to 65535");

    edit.setError(true);
    field->setAccessibleDescription("The owner's new words");
    edit.setError(false);
    QCOMPARE(description(), "The owner's new words");
}

void FormControlsTest::labelsLeadIntoTheField_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<char>("key");
    const auto row = [](const char *text, const char *shown, char key) {
        QTest::newRow(text) << QString(text) << QString(shown) << key;
    };
    row("&Host", "Host", 'h');
    row("to &port", "to port", 'p');
    row("E&xit", "Exit", 'x');
    row("(&1)", "(1)", '1');
    row("R&&D &budget", "R&D budget", 'b');
    row("Name && address", "Name & address", 0);
    row("R&D budget", "R&D budget", 0);
    row("Name & address", "Name & address", 0);
    row("1&2", "1&2", 0);
    row("Ask &", "Ask &", 0);
    row("R&D && &more", "R&D && &more", 0);
    row("plain", "plain", 0);
    row("<b>fine</b> &amp; good", "fine & good", 0);
}

void FormControlsTest::labelsLeadIntoTheField()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QFETCH(char, key);
    QWidget window;
    QVBoxLayout layout(&window);
    KovaLineEdit other(&window);
    KovaLineEdit edit(&window);
    QLabel plain(shown);
    plain.setStyleSheet(edit.getPreLabel()->styleSheet());
    layout.addWidget(&other);
    layout.addWidget(&edit);
    layout.addWidget(&plain);
    showActive(&window);
    for (QLabel *label : {edit.getPostLabel(), edit.getPreLabel()}) {
        label->setText("&Zeal");
        QTRY_COMPARE(label->buddy(), edit.getLineEdit());
        label->setText(text);
        QTRY_COMPARE(spoken(edit.getLineEdit()), shown);
        if (!text.startsWith('<'))
            QTRY_COMPARE(label->sizeHint(), plain.sizeHint());
        const QString keys = text.toLower() + " d";
        for (const QChar each : keys) {
            other.setFocus();
            press(&window, each.unicode() < 128 ? each.toUpper().unicode() : 0, Qt::AltModifier);
            QCOMPARE(edit.getLineEdit()->hasFocus(), key != 0 && each == key);
        }
    }
    edit.getLineEdit()->setAccessibleName("Its own");
    edit.getPreLabel()->setText("New");
    QTRY_VERIFY(!edit.getPreLabel()->buddy());
    QCOMPARE(spoken(edit.getLineEdit()), "Its own");
    edit.setFocus();
    QCOMPARE(window.focusWidget(), edit.getLineEdit());
}

void FormControlsTest::placeholdersAreWeakerThanText()
{
    const QString words = "MMMM";
    KovaLineEdit edit;
    KovaInputSheet sheet(nullptr);
    KovaComboBox box;
    KovaComboBox editable;
    KovaFilterBar bar;
    KovaDateSelector date("MMMM-MM-MM", nullptr);
    edit.getLineEdit()->setPlaceholderText(words);
    sheet.getLineEdit()->setPlaceholderText(words);
    editable.setEditable(true);
    editable.lineEdit()->setPlaceholderText(words);
    box.setPlaceholderText(words);
    box.addItem(words);
    box.setCurrentIndex(-1);
    bar.setPlaceholderText(words);
    // Its picture is as dark as text.
    bar.findChild<KovaIconButton *>()->setFixedWidth(1);

    const QPair<QWidget *, std::function<void()>> fields[] = {
        {edit.getLineEdit(), [&] { edit.getLineEdit()->setText(words); }},
        {sheet.getLineEdit(), [&] { sheet.getLineEdit()->setText(words); }},
        {&bar, [&] { bar.setText(words); }},
        {&editable, [&] { editable.setEditText(words); }},
        {&box, [&] { box.setCurrentIndex(0); }},
        {&date, [&] { date.dateSelect(QDate(2024, 8, 26)); }},
    };
    for (const auto &[field, type] : fields) {
        field->resize(scaled(160), scaled(32));
        QCoreApplication::processEvents();
        const int hint = darkest(field);
        field->setStyleSheet(field->styleSheet() + ' ');
        QCOMPARE(darkest(field), hint);
        type();
        QVERIFY2(hint > 100 && hint + 20 < darkest(field), field->metaObject()->className());
    }

    // A host's colour is taken, from the field or from the application.
    const QPalette before = QApplication::palette();
    QPalette colors = before;
    colors.setColor(QPalette::PlaceholderText, Qt::darkGreen);
    edit.getLineEdit()->setPalette(colors);
    QCOMPARE(edit.getLineEdit()->palette().color(QPalette::PlaceholderText), Qt::darkGreen);
    colors.setColor(QPalette::PlaceholderText, Qt::darkRed);
    QApplication::setPalette(colors);
    KovaFilterBar late;
    late.ensurePolished();
    QApplication::setPalette(before);
    QCOMPARE(late.palette().color(QPalette::PlaceholderText), Qt::darkRed);
}

void FormControlsTest::labelGrowsAndShrinksWithItsText()
{
    KovaLabel label(QString("word ").repeated(30));
    label.setWordWrap(true);
    label.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    label.resize(150, 10);
    label.show();
    const int narrow = label.minimumHeight();
    QVERIFY(narrow >= 4 * label.fontMetrics().height());
    label.resize(400, label.height());
    QVERIFY(label.minimumHeight() < narrow);
    QVERIFY(label.minimumHeight() >= 2 * label.fontMetrics().height());
    label.resize(150, label.height());
    QCOMPARE(label.minimumHeight(), narrow);
    // A picture has no height for a width; nor does it keep the height of the text.
    label.setPixmap(QPixmap(20, 30));
    label.resize(160, label.height());
    QCOMPARE(label.minimumHeight(), 0);
}

void FormControlsTest::labelKeepsItsMinimumHeight()
{
    const QPair<bool, QSizePolicy::Policy> settings[] = {{false, QSizePolicy::Minimum},
                                                         {true, QSizePolicy::MinimumExpanding},
                                                         {true, QSizePolicy::Preferred}};
    for (const auto &[wraps, policy] : settings) {
        KovaLabel label(QString("word ").repeated(30));
        label.setWordWrap(wraps);
        label.setSizePolicy(QSizePolicy::Preferred, policy);
        label.setMinimumHeight(7);
        label.show();
        label.resize(90, 40);
        QCOMPARE(label.minimumHeight(), 7);
    }
}

void FormControlsTest::footbarKeepsItsGroupsApart()
{
    KovaFootbar bar;
    auto *help = new KovaButton("Help", KovaButton::Standard);
    auto *files = new QLabel("3 files");
    auto *gone = new QWidget;
    auto *ok = new KovaButton("OK", KovaButton::Apply);
    auto *cancel = new KovaButton("Cancel", KovaButton::Cancel);
    for (QWidget *widget : std::initializer_list<QWidget *>{help, files})
        bar.pushLeftWidget(widget);
    for (QWidget *widget : {gone, static_cast<QWidget *>(ok), static_cast<QWidget *>(cancel)})
        bar.pushRightWidget(widget);
    delete gone;
    bar.init();
    bar.resize(scaled(600), bar.sizeHint().height());
    bar.show();

    QCOMPARE(help->pos(), QPoint(scaled(20), scaled(8)));
    QCOMPARE(files->x(), rightOf(help) + scaled(10));
    QCOMPARE(files->geometry().center().y(), help->geometry().center().y());
    QCOMPARE(ok->geometry().right() + 1 + scaled(10), cancel->x());
    QCOMPARE(rightOf(cancel), bar.width() - scaled(20));

    bar.setMargins(1, 2, 3, 4);
    bar.setSpacing(5);
    QCOMPARE(bar.layout()->contentsMargins(), QMargins(scaled(1), scaled(2), scaled(3), scaled(4)));
    QCOMPARE(bar.layout()->spacing(), scaled(5));
}

QTEST_MAIN(FormControlsTest)
#include "form-controls-test.moc"
