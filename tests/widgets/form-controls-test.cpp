// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

namespace {

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
    void errorIsShownAndTold();
    void labelsLeadIntoTheField();
    void placeholdersAreWeakerThanText();
    void labelGrowsAndShrinksWithItsText();
    void footbarKeepsItsGroupsApart();
};

void FormControlsTest::lineEditLaysOutARow()
{
    KovaLineEdit edit;
    edit.getPreLabel()->setText("Port");
    edit.getPostLabel()->setText("TCP");
    edit.show();
    // No margins and no spacing at first.
    for (const int px : {0, 3}) {
        QCOMPARE(edit.getPreLabel()->x(), kovaPx(px));
        QCOMPARE(edit.getLineEdit()->x(), rightOf(edit.getPreLabel()) + kovaPx(px));
        QCOMPARE(edit.getPostLabel()->x(), rightOf(edit.getLineEdit()) + kovaPx(px));
        edit.setMargins(3, 4, 5, 6);
        edit.setSpacing(3);
        edit.adjustSize();
    }
    const QMargins margins(kovaPx(3), kovaPx(4), kovaPx(5), kovaPx(6));
    QCOMPARE(edit.layout()->contentsMargins(), margins);
}

void FormControlsTest::errorIsShownAndTold()
{
    KovaLineEdit edit;
    QLineEdit *field = edit.getLineEdit();
    const auto description = [field] { return spoken(field, QAccessible::Description); };
    showActive(&edit);
    const QImage right = edit.grab().toImage();
    QVERIFY(edit.validate());
    edit.setValidator([](const QString &text) { return text.toInt() > 0; });
    QVERIFY(!edit.validate());
    QCOMPARE(edit.grab().toImage(), right);
    edit.setError(true);
    edit.setError(true);
    QVERIFY(right != edit.grab().toImage());
    QCOMPARE(description(), "⚠");
    edit.setError(false);
    QCOMPARE(edit.grab().toImage(), right);
    QCOMPARE(description(), "");
    field->setText("8080");
    QVERIFY(edit.validate());

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

void FormControlsTest::labelsLeadIntoTheField()
{
    // What a label is given, what is read of it, and the key that leads into the field.
    const std::tuple<QString, QString, QChar> labels[] = {
        {"&Host", "Host", 'h'},
        {"to &port", "to port", 'p'},
        {"E&xit", "Exit", 'x'},
        {"(&1)", "(1)", '1'},
        {"R&&D &budget", "R&D budget", 'b'},
        {"Name && address", "Name & address", {}},
        {"R&D budget", "R&D budget", {}},
        {"Name & address", "Name & address", {}},
        {"1&2", "1&2", {}},
        {"Ask &", "Ask &", {}},
        {"R&D && &more", "R&D && &more", {}},
        {"<b>fine</b> &amp; good", "fine & good", {}},
    };
    QWidget window;
    QVBoxLayout layout(&window);
    KovaLineEdit other;
    KovaLineEdit edit;
    QLabel plain;
    for (QWidget *widget : std::initializer_list<QWidget *>{&other, &edit, &plain})
        layout.addWidget(widget);
    plain.setStyleSheet(edit.getPreLabel()->styleSheet());
    showActive(&window);
    for (QLabel *label : {edit.getPostLabel(), edit.getPreLabel()}) {
        for (const auto &[text, shown, key] : labels) {
            label->setText(text);
            plain.setText(shown);
            QTRY_COMPARE(spoken(edit.getLineEdit()), shown);
            if (!text.startsWith('<'))
                QTRY_COMPARE(label->sizeHint(), plain.sizeHint());
            for (const QChar each : text.toLower() + " d") {
                other.setFocus();
                press(&window, each.toUpper().unicode(), Qt::AltModifier);
                const bool isLed = window.focusWidget() == edit.getLineEdit();
                QVERIFY2(isLed == (each == key), qPrintable(text));
            }
        }
        label->clear();
    }
    edit.getLineEdit()->setAccessibleName("Its own");
    edit.getPreLabel()->setText("New");
    QCoreApplication::processEvents();
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
    box.addItem(words);
    box.setCurrentIndex(-1);
    editable.setEditable(true);
    // Its picture is as dark as text.
    bar.findChild<KovaIconButton *>()->setFixedWidth(1);

    const QPair<QWidget *, std::function<void()>> fields[] = {
        {edit.getLineEdit(), [&] { edit.getLineEdit()->setText(words); }},
        {sheet.getLineEdit(), [&] { sheet.getLineEdit()->setText(words); }},
        {&bar, [&] { bar.setText(words); }},
        {editable.lineEdit(), [&] { editable.setEditText(words); }},
        {&box, [&] { box.setCurrentIndex(0); }},
        {&date, [&] { date.dateSelect(QDate(2024, 8, 26)); }},
    };
    for (const auto &[field, type] : fields) {
        if (field != &date)
            field->setProperty("placeholderText", words);
        field->resize(kovaPx(160), kovaPx(32));
        field->setStyleSheet(field->styleSheet() + ' ');
        const int hint = darkest(field);
        type();
        QVERIFY2(hint > 100 && hint + 20 < darkest(field), field->metaObject()->className());
    }

    // A host's colour is taken, from the field or from the application.
    QPalette colors;
    colors.setColor(QPalette::PlaceholderText, Qt::darkGreen);
    edit.getLineEdit()->setPalette(colors);
    QCOMPARE(edit.getLineEdit()->palette().color(QPalette::PlaceholderText), Qt::darkGreen);
    colors.setColor(QPalette::PlaceholderText, Qt::darkRed);
    QApplication::setPalette(colors);
    KovaFilterBar late;
    late.ensurePolished();
    QApplication::setPalette(QPalette());
    QCOMPARE(late.palette().color(QPalette::PlaceholderText), Qt::darkRed);
}

void FormControlsTest::labelGrowsAndShrinksWithItsText()
{
    KovaLabel label(QString("word ").repeated(30));
    label.setMinimumHeight(7);
    label.show();
    const auto leastHeight = [&label](int width) {
        label.resize(width, 40);
        return label.minimumHeight();
    };
    label.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    QCOMPARE(leastHeight(90), 7);
    label.setWordWrap(true);
    label.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::MinimumExpanding);
    QCOMPARE(leastHeight(100), 7);

    label.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    const int narrow = leastHeight(150);
    QVERIFY(narrow >= 4 * label.fontMetrics().height());
    QVERIFY(leastHeight(400) < narrow);
    QVERIFY(leastHeight(401) >= 2 * label.fontMetrics().height());
    // A picture has no height for a width; nor does it keep the height of the text.
    label.setPixmap(QPixmap(20, 30));
    QCOMPARE(leastHeight(160), 0);
}

void FormControlsTest::footbarKeepsItsGroupsApart()
{
    KovaFootbar bar;
    auto *help = new KovaButton("Help", KovaButton::Standard);
    auto *files = new QLabel("3 files");
    auto *gone = new QWidget;
    auto *ok = new KovaButton("OK", KovaButton::Apply);
    auto *cancel = new KovaButton("Cancel", KovaButton::Cancel);
    bar.pushLeftWidget(help);
    bar.pushLeftWidget(files);
    for (QWidget *widget : std::initializer_list<QWidget *>{gone, ok, cancel})
        bar.pushRightWidget(widget);
    delete gone;
    bar.init();
    bar.resize(kovaPx(600), bar.sizeHint().height());
    bar.show();

    QCOMPARE(help->pos(), QPoint(kovaPx(20), kovaPx(8)));
    QCOMPARE(files->x(), rightOf(help) + kovaPx(10));
    QCOMPARE(files->geometry().center().y(), help->geometry().center().y());
    QCOMPARE(cancel->x(), rightOf(ok) + kovaPx(10));
    QCOMPARE(rightOf(cancel), bar.width() - kovaPx(20));

    bar.setMargins(1, 2, 3, 4);
    bar.setSpacing(5);
    QCOMPARE(bar.layout()->contentsMargins(), QMargins(kovaPx(1), kovaPx(2), kovaPx(3), kovaPx(4)));
    QCOMPARE(bar.layout()->spacing(), kovaPx(5));
}

QTEST_MAIN(FormControlsTest)
#include "form-controls-test.moc"
