// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

// The box: its style text and what is drawn of it, the keyboard, and the wheel on a page that
// scrolls.
class KovaComboBoxTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void fillsItsStyleText();
    void drawsItemsByStyle();
    void isUsedByKeyboardAlone();
    void wheelWithoutFocusGoesToThePage();
};

void KovaComboBoxTest::fillsItsStyleText()
{
    const QMap<int, QString> paddings = {{96, "6"}, {120, "7.5"}, {144, "9"}, {192, "12"}};
    const QString padding = paddings.value(qEnvironmentVariableIntValue("QT_FONT_DPI"));
    QString expected = getStyleSheet("component.combobox", false);
    expected.replace("%1", "padding-left: " + padding + "px; \npadding-right: " + padding + "px;");
    expected.replace("%2", "border: 1px solid #C8D2DC;");
    QCOMPARE(KovaComboBox().styleSheet(), expected + getStyleSheet("component.scrollbar", false));
}

void KovaComboBoxTest::drawsItemsByStyle()
{
    KovaComboBox box;
    box.addItem("Every day");
    box.ensurePolished();
    const QImage chosen = box.grab().toImage();
    box.setCurrentIndex(-1);
    const QImage empty = box.grab().toImage();
    box.setPlaceholderText("Choose");
    QVERIFY(chosen != empty && box.grab().toImage() != empty);
    // The padding of the items' rule, 26 design pixels high.
    QCOMPARE(box.view()->sizeHintForRow(0), kovaPx(26));
}

void KovaComboBoxTest::isUsedByKeyboardAlone()
{
    QWidget window;
    KovaComboBox box(&window);
    for (int i = 0; i < 30; ++i)
        box.addItem(QString("Entry %1").arg(i));
    showActive(&window);
    for (const auto end : {Qt::Key_Escape, Qt::Key_Return}) {
        press(&window, {Qt::Key_Tab, Qt::Key_Space});
        QTRY_VERIFY(box.view()->isVisible());
        press(box.view(), Qt::Key_End);
        QVERIFY(box.view()->verticalScrollBar()->isVisible());
        press(box.view(), end);
        QTRY_VERIFY(!box.view()->isVisible());
        QCOMPARE(box.currentIndex(), end == Qt::Key_Return ? 29 : 0);
        QVERIFY(box.hasFocus());
    }
}

void KovaComboBoxTest::wheelWithoutFocusGoesToThePage()
{
    QScrollArea page;
    page.setWidget(new QWidget);
    auto *layout = new QVBoxLayout(page.widget());
    auto *edit = new QLineEdit;
    auto *box = new KovaComboBox;
    auto *date = new KovaDateSelector("Date", nullptr);
    for (QWidget *widget : std::initializer_list<QWidget *>{edit, box, date})
        layout->addWidget(widget);
    box->addItems({"one", "two", "three"});
    layout->addStretch();
    page.widget()->resize(200, 900);
    page.resize(260, 600);
    showActive(&page);
    edit->setFocus();
    for (const bool editable : {false, true}) {
        box->setEditable(editable);
        for (QComboBox *each : std::initializer_list<QComboBox *>{box, date}) {
            page.verticalScrollBar()->setValue(0);
            turnWheel(each, -1);
            QVERIFY(page.verticalScrollBar()->value() > 0);
            QVERIFY(edit->hasFocus());
            QCOMPARE(each->currentIndex(), 0);
        }
    }
    box->setFocus();
    page.verticalScrollBar()->setValue(0);
    turnWheel(box, -1);
    QCOMPARE(box->currentIndex(), 1);
    QCOMPARE(page.verticalScrollBar()->value(), 0);
}

QTEST_MAIN(KovaComboBoxTest)
#include "kova-combo-box-test.moc"
