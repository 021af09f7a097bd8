#include <kovakit-qt/widgets/link-label.h>

#include <QAccessible>
#include <QGuiApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

namespace {

constexpr QPoint inside(60, 40);
constexpr QPoint outside(190, 90);

bool showsHand()
{
    const QCursor *cursor = QGuiApplication::overrideCursor();
    return cursor && cursor->shape() == Qt::PointingHandCursor;
}

} // namespace

class LinkLabelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void keepsItsTarget();
    void isClickedByPressing();
    void canDieInItsClick();
    void isPressedByKeyboard();
    void isALinkToScreenReaders();
    void hoverShowsHandAndUnderline();
    void disabledUnderThePointerKeepsTheHand();
    void enabledUnderThePointerShowsTheHand();
    void leavesNoHandBehind_data();
    void leavesNoHandBehind();

private:
    void point(const QPoint &where) { QTest::mouseMove(m_window->windowHandle(), where); }

    QWidget *m_window = nullptr;
    QWidget *m_group = nullptr;
    QLineEdit *m_edit = nullptr;
    LinkLabel *m_label = nullptr;
};

void LinkLabelTest::init()
{
    m_window = new QWidget;
    m_window->resize(200, 100);
    m_edit = new QLineEdit(m_window);
    m_group = new QWidget(m_window);
    m_group->setGeometry(0, 30, 180, 40);
    m_label = new LinkLabel(QStringLiteral("Read more"));
    m_label->setParent(m_group);
    m_label->setGeometry(10, 0, 150, 20);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    m_edit->setFocus();
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

void LinkLabelTest::keepsItsTarget()
{
    QCOMPARE(m_label->getHyperLink(), QString());
    m_label->setHyperLink(QStringLiteral("help://backup"));
    QCOMPARE(m_label->getHyperLink(), QStringLiteral("help://backup"));
}

void LinkLabelTest::isClickedByPressing()
{
    QSignalSpy clicks(m_label, &LinkLabel::clicked);
    int expected = 0;
    for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        QTest::mousePress(m_window->windowHandle(), button, {}, inside);
        QCOMPARE(clicks.count(), ++expected);
        QTest::mouseRelease(m_window->windowHandle(), button, {}, inside);
        QCOMPARE(clicks.count(), expected);
    }
    m_group->setEnabled(false);
    QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {}, inside);
    QCOMPARE(clicks.count(), expected);
}

void LinkLabelTest::canDieInItsClick()
{
    connect(m_label, &LinkLabel::clicked, m_group, [this] { delete m_label; });
    point(inside);
    QVERIFY(showsHand());
    QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {}, inside);
    QCOMPARE(m_group->children().size(), 0);
}

void LinkLabelTest::isPressedByKeyboard()
{
    QSignalSpy clicks(m_label, &LinkLabel::clicked);
    QWindow *handle = m_window->windowHandle();
    QTest::keyClick(handle, Qt::Key_Tab);
    QVERIFY(m_label->hasFocus());
    const QImage focused = m_label->grab().toImage();
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        QTest::keyClick(handle, key);
    QCOMPARE(clicks.count(), 3);
    QTest::keyClick(handle, Qt::Key_A);
    QCOMPARE(clicks.count(), 3);
    QTest::keyClick(handle, Qt::Key_Tab);
    QVERIFY(!m_label->hasFocus());
    QVERIFY(focused != m_label->grab().toImage());
}

void LinkLabelTest::isALinkToScreenReaders()
{
    // With a screen reader running, Qt asks for the interface while a label is made.
    QAccessible::setActive(true);
    delete m_label;
    m_label = new LinkLabel(QStringLiteral("Read more"));
    m_label->setParent(m_group);
    m_label->show();
    QAccessible::setActive(false);

    QSignalSpy clicks(m_label, &LinkLabel::clicked);
    QAccessibleInterface *link = QAccessible::queryAccessibleInterface(m_label);
    QCOMPARE(link->role(), QAccessible::Link);
    QCOMPARE(link->text(QAccessible::Name), QStringLiteral("Read more"));
    m_label->setText(QStringLiteral("Read <b>more</b> &amp; better"));
    QCOMPARE(link->text(QAccessible::Name), QStringLiteral("Read more & better"));
    m_label->setAccessibleName(QStringLiteral("More about backups"));
    QCOMPARE(link->text(QAccessible::Name), QStringLiteral("More about backups"));

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
    for (int i = 0; i < 3; ++i) {
        point(inside);
        QVERIFY(showsHand());
        QVERIFY(m_label->font().underline());
        point(outside);
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        QVERIFY(!m_label->font().underline());
    }
    QGuiApplication::restoreOverrideCursor();
    m_label->setEnabled(false);
    point(inside);
    QVERIFY(!showsHand());
    QVERIFY(!m_label->font().underline());
}

void LinkLabelTest::disabledUnderThePointerKeepsTheHand()
{
    point(inside);
    m_label->setEnabled(false);
    point(outside);
    QVERIFY(showsHand());
    // It is the application's now: neither the label nor its end takes it away.
    m_label->setEnabled(true);
    point(inside);
    point(outside);
    delete m_label;
    QVERIFY(showsHand());
    QGuiApplication::restoreOverrideCursor();
    QVERIFY(!QGuiApplication::overrideCursor());
}

void LinkLabelTest::enabledUnderThePointerShowsTheHand()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_label->setEnabled(false);
    point(inside);
    m_label->setEnabled(true);
    QVERIFY(showsHand());
    point(outside);
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QGuiApplication::restoreOverrideCursor();
}

void LinkLabelTest::leavesNoHandBehind_data()
{
    using Step = std::function<void(LinkLabelTest *)>;
    QTest::addColumn<Step>("step");
    const auto row = [](const char *name, const Step &step) { QTest::newRow(name) << step; };
    row("hidden", [](LinkLabelTest *t) { t->m_label->hide(); });
    row("hidden group", [](LinkLabelTest *t) { t->m_group->hide(); });
    row("hidden window", [](LinkLabelTest *t) { t->m_window->hide(); });
    row("closed window", [](LinkLabelTest *t) { t->m_window->close(); });
    row("deleted", [](LinkLabelTest *t) { delete t->m_label; });
    row("deleted group", [](LinkLabelTest *t) { delete t->m_group; });
    row("disabled, hidden", [](LinkLabelTest *t) {
        t->m_label->setEnabled(false);
        t->m_label->hide();
    });
    row("disabled, deleted", [](LinkLabelTest *t) {
        t->m_group->setEnabled(false);
        delete t->m_label;
    });
    row("hidden, enabled again", [](LinkLabelTest *t) {
        t->m_group->hide();
        t->m_label->setEnabled(false);
        t->m_label->setEnabled(true);
    });
    row("to another parent", [](LinkLabelTest *t) { t->m_label->setParent(t->m_window); });
    row("disabled and enabled, left", [](LinkLabelTest *t) {
        t->m_label->setEnabled(false);
        t->m_label->setEnabled(true);
        t->point(outside);
    });
}

Q_DECLARE_METATYPE(std::function<void(LinkLabelTest *)>)

void LinkLabelTest::leavesNoHandBehind()
{
    QFETCH(std::function<void(LinkLabelTest *)>, step);
    point(inside);
    QVERIFY(showsHand());
    step(this);
    QCoreApplication::processEvents();
    QVERIFY(!QGuiApplication::overrideCursor());
}

QTEST_MAIN(LinkLabelTest)
#include "link-label-test.moc"
