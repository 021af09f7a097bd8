#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QtTest>

class KovaComboBoxTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void fillsItsStyleText();
    void drawsItemsByStyle();
    void isUsedByKeyboardAlone();
};

void KovaComboBoxTest::fillsItsStyleText()
{
    const QMap<int, QString> paddings = {{96, QStringLiteral("6")},
                                         {120, QStringLiteral("7.5")},
                                         {144, QStringLiteral("9")},
                                         {192, QStringLiteral("12")}};
    const KovaComboBox box;
    const QString padding = paddings.value(qEnvironmentVariableIntValue("QT_FONT_DPI"));
    QString expected = getStyleSheet("component.combobox", false);
    expected.replace(QLatin1String("%1"),
                     QStringLiteral("padding-left: %1px; \npadding-right: %1px;")
                         .replace(QLatin1String("%1"), padding));
    expected.replace(QLatin1String("%2"), QLatin1String("border: 1px solid #C8D2DC;"));
    QCOMPARE(box.styleSheet(), expected + getStyleSheet("component.scrollbar", false));
}

void KovaComboBoxTest::drawsItemsByStyle()
{
    KovaComboBox box;
    QCOMPARE(box.view()->itemDelegate()->metaObject(), &QStyledItemDelegate::staticMetaObject);
    box.addItem(QStringLiteral("Every day"));
    box.ensurePolished();
    // The padding of the items' rule, 26 design pixels high.
    QCOMPARE(box.view()->sizeHintForRow(0), kovaPx(26));
}

void KovaComboBoxTest::isUsedByKeyboardAlone()
{
    QWidget window;
    auto *edit = new QLineEdit(&window);
    auto *box = new KovaComboBox(&window);
    box->move(0, 60);
    for (int i = 1; i <= 30; ++i)
        box->addItem(QStringLiteral("Entry %1").arg(i));
    window.resize(300, 120);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    edit->setFocus();

    const auto press = [&window](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget *popup = QApplication::activePopupWidget();
        QTest::keyClick((popup ? popup : &window)->windowHandle(), key, modifiers);
    };
    press(Qt::Key_Tab);
    QVERIFY(box->hasFocus());
    press(Qt::Key_Down);
    QCOMPARE(box->currentIndex(), 1);
    for (const auto &open : {std::pair(Qt::Key_Space, Qt::KeyboardModifiers()),
                             std::pair(Qt::Key_F4, Qt::KeyboardModifiers()),
                             std::pair(Qt::Key_Down, Qt::KeyboardModifiers(Qt::AltModifier))}) {
        const int before = box->currentIndex();
        press(open.first, open.second);
        QTRY_VERIFY(box->view()->isVisible());
        press(Qt::Key_Down);
        press(Qt::Key_Escape);
        QTRY_VERIFY(!box->view()->isVisible());
        QCOMPARE(box->currentIndex(), before);

        press(open.first, open.second);
        QTRY_VERIFY(box->view()->isVisible());
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QTRY_VERIFY(!box->view()->isVisible());
        QCOMPARE(box->currentIndex(), before + 1);
        QVERIFY(box->hasFocus());
    }

    press(Qt::Key_Space);
    QTRY_VERIFY(box->view()->isVisible());
    press(Qt::Key_End);
    QVERIFY(box->view()->verticalScrollBar()->isVisible());
    press(Qt::Key_Return);
    QTRY_COMPARE(box->currentIndex(), 29);
}

QTEST_MAIN(KovaComboBoxTest)
#include "kova-combo-box-test.moc"
