// SPDX-License-Identifier: MIT

#include <kovakit-qt/widgets/link-label.h>

#include "support/user-input.h"

#include <QLineEdit>
#include <QtTest>

namespace {

constexpr QPoint inside(60, 40);
constexpr QPoint outside(190, 90);

using Step = std::function<void()>;
using Steps = QList<Step>;

} // namespace

Q_DECLARE_METATYPE(Steps)

// How a link is clicked and found, and the hand over it, which the whole application shows.
class LinkLabelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void isClickedByPressingAndMayEndInIt();
    void isPressedByKeyboard();
    void isALinkToScreenReaders();
    void handShowsOverTheLink_data();
    void handShowsOverTheLink();

private:
    void point(const QPoint &where) { QTest::mouseMove(m_window->windowHandle(), where); }

    QWidget *m_window = nullptr;
    QWidget *m_group = nullptr;
    QPointer<LinkLabel> m_label;
};

void LinkLabelTest::init()
{
    // With a screen reader running, Qt asks for the interface while a label is made.
    QAccessible::setActive(true);
    m_window = new QWidget;
    m_window->resize(200, 100);
    auto *edit = new QLineEdit(m_window);
    m_group = new QWidget(m_window);
    m_group->setGeometry(0, 30, 180, 40);
    m_label = new LinkLabel("Read more");
    m_label->setParent(m_group);
    m_label->setGeometry(10, 0, 150, 20);
    showActive(m_window);
    QAccessible::setActive(false);
    edit->setFocus();
    // A move to where the pointer was in the window before would not be one.
    point(outside - QPoint(1, 1));
    point(outside);
}

void LinkLabelTest::cleanup()
{
    delete m_window;
    const bool leaked = QGuiApplication::overrideCursor();
    while (QGuiApplication::overrideCursor())
        QGuiApplication::restoreOverrideCursor();
    QVERIFY(!leaked);
}

void LinkLabelTest::isClickedByPressingAndMayEndInIt()
{
    QSignalSpy clicks(m_label, &LinkLabel::clicked);
    for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        QTest::mousePress(m_window->windowHandle(), button, {}, inside);
        QCOMPARE(clicks.count(), 1);
        QTest::mouseRelease(m_window->windowHandle(), button, {}, inside);
        QCOMPARE(clicks.count(), 1);
        clicks.clear();
    }
    m_group->setEnabled(false);
    click(m_window, inside);
    QCOMPARE(clicks.count(), 0);

    m_group->setEnabled(true);
    connect(m_label, &LinkLabel::clicked, m_group, [this] { delete m_label; });
    click(m_window, inside);
    QCOMPARE(m_group->children().size(), 0);
}

void LinkLabelTest::isPressedByKeyboard()
{
    QSignalSpy clicks(m_label, &LinkLabel::clicked);
    press(m_window, Qt::Key_Tab);
    QVERIFY(m_label->hasFocus());
    const QImage focused = m_label->grab().toImage();
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_A})
        press(m_window, key);
    QCOMPARE(clicks.count(), 3);
    press(m_window, Qt::Key_Tab);
    QVERIFY(!m_label->hasFocus());
    QVERIFY(focused != m_label->grab().toImage());
}

void LinkLabelTest::isALinkToScreenReaders()
{
    QSignalSpy clicks(m_label, &LinkLabel::clicked);
    QAccessibleInterface *link = QAccessible::queryAccessibleInterface(m_label);
    QCOMPARE(link->role(), QAccessible::Link);
    QCOMPARE(spoken(m_label), "Read more");
    m_label->setText("Read <b>more</b> &amp; better");
    QCOMPARE(spoken(m_label), "Read more & better");
    m_label->setAccessibleName("More about backups");
    QCOMPARE(spoken(m_label), "More about backups");

    QAccessibleActionInterface *actions = link->actionInterface();
    QVERIFY(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(clicks.count(), 1);
    actions->doAction(QAccessibleActionInterface::setFocusAction());
    QVERIFY(m_label->hasFocus());
    m_label->setEnabled(false);
    QVERIFY(!actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(clicks.count(), 1);
}

void LinkLabelTest::handShowsOverTheLink_data()
{
    QTest::addColumn<Steps>("steps");
    QTest::addColumn<bool>("isHand");
    const Step disable = [this] { m_label->setEnabled(false); };
    const Step enable = [this] { m_label->setEnabled(true); };
    const Step hide = [this] { m_group->hide(); };
    const Step enter = [this] { point(inside); };
    const Step leave = [this] { point(outside); };
    const Step end = [this] { delete m_label; };
    QTest::newRow("entered") << Steps{enter} << true;
    QTest::newRow("left") << Steps{enter, leave} << false;
    QTest::newRow("entered while disabled") << Steps{disable, enter} << false;
    QTest::newRow("enabled under it") << Steps{disable, enter, enable} << true;
    QTest::newRow("enabled under it, left") << Steps{disable, enter, enable, leave} << false;
    QTest::newRow("disabled, left") << Steps{enter, disable, leave} << true;
    // It is the application's now: neither the label nor its end takes it away.
    QTest::newRow("disabled, left, entered, left, deleted")
        << Steps{enter, disable, leave, enable, enter, leave, end} << true;
    QTest::newRow("disabled, hidden") << Steps{enter, disable, hide} << false;
    QTest::newRow("disabled, deleted") << Steps{enter, disable, end} << false;
    QTest::newRow("disabled, enabled, left") << Steps{enter, disable, enable, leave} << false;
}

void LinkLabelTest::handShowsOverTheLink()
{
    QFETCH(Steps, steps);
    QFETCH(bool, isHand);
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    for (const Step &step : steps)
        step();
    QCoreApplication::processEvents();
    const auto shape = isHand ? Qt::PointingHandCursor : Qt::WaitCursor;
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), shape);
    if (m_label && m_label->isEnabled())
        QCOMPARE(m_label->font().underline(), isHand);
    QGuiApplication::restoreOverrideCursor();
    if (isHand)
        QGuiApplication::restoreOverrideCursor();
}

QTEST_MAIN(LinkLabelTest)
#include "link-label-test.moc"
