// SPDX-License-Identifier: MIT

#include <kovakit-qt/widgets/link-label.h>

#include "support/user-input.h"

#include <QLineEdit>
#include <QtTest>

namespace {

constexpr QPoint inside(60, 40);
constexpr QPoint outside(190, 90);

// The shape that the whole application shows; an arrow if it shows none of its own.
Qt::CursorShape shownCursor()
{
    const QCursor *cursor = QGuiApplication::overrideCursor();
    return cursor ? cursor->shape() : Qt::ArrowCursor;
}

} // namespace

class LinkLabelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void isClickedByPressingAndMayEndInIt();
    void isPressedByKeyboard();
    void isALinkToScreenReaders();
    void hoverShowsHandAndUnderline();
    void disabledUnderThePointerKeepsTheHand();
    void leavesNoHandBehind();

private:
    void point(const QPoint &where) { QTest::mouseMove(m_window->windowHandle(), where); }

    QWidget *m_window = nullptr;
    QWidget *m_group = nullptr;
    LinkLabel *m_label = nullptr;
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

void LinkLabelTest::hoverShowsHandAndUnderline()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    point(inside);
    QCOMPARE(shownCursor(), Qt::PointingHandCursor);
    QVERIFY(m_label->font().underline());
    point(outside);
    QCOMPARE(shownCursor(), Qt::WaitCursor);
    QVERIFY(!m_label->font().underline());

    m_label->setEnabled(false);
    point(inside);
    QCOMPARE(shownCursor(), Qt::WaitCursor);
    m_label->setEnabled(true);
    QCOMPARE(shownCursor(), Qt::PointingHandCursor);
    point(outside);
    QCOMPARE(shownCursor(), Qt::WaitCursor);
    QGuiApplication::restoreOverrideCursor();
}

void LinkLabelTest::disabledUnderThePointerKeepsTheHand()
{
    point(inside);
    m_label->setEnabled(false);
    point(outside);
    QCOMPARE(shownCursor(), Qt::PointingHandCursor);
    // It is the application's now: neither the label nor its end takes it away.
    m_label->setEnabled(true);
    point(inside);
    point(outside);
    delete m_label;
    QCOMPARE(shownCursor(), Qt::PointingHandCursor);
    QGuiApplication::restoreOverrideCursor();
}

void LinkLabelTest::leavesNoHandBehind()
{
    using Step = std::function<void()>;
    const Step disable = [this] { m_label->setEnabled(false); };
    const Step enable = [this] { m_label->setEnabled(true); };
    const Step hide = [this] { m_group->hide(); };
    const Step leave = [this] { point(outside); };
    const Step end = [this] { delete m_label; };
    const QPair<const char *, QList<Step>> rows[] = {
        {"disabled, hidden", {disable, hide}},
        {"disabled, deleted", {disable, end}},
        {"disabled, enabled again, left", {disable, enable, leave}},
    };
    for (const auto &[name, steps] : rows) {
        point(inside);
        for (const Step &step : steps)
            step();
        QCoreApplication::processEvents();
        QVERIFY2(!QGuiApplication::overrideCursor(), name);
        cleanup();
        init();
    }
}

QTEST_MAIN(LinkLabelTest)
#include "link-label-test.moc"
