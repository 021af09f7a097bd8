#include <kovakit-qt/widgets/kova-button-path.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

// The owner of a bar answers from inside the click of a button that its answer deletes.
class KovaButtonPathLifetimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup() { m_window.reset(); }
    void ownerAnswersAtOnce_data() { addWays(); }
    void ownerAnswersAtOnce();
    void barEndsInItsSignal_data() { addWays(); }
    void barEndsInItsSignal();
    void menuIsChosenFromTwiceWhileBusy();
    void pathChangesUnderTheOpenMenu();
    void barEndsUnderTheOpenMenu();

private:
    using Way = std::function<void(KovaButtonPathLifetimeTest *)>;

    static void addWays();
    [[nodiscard]] QWidget *name(int index) const { return m_bar->cellWidget(0, 2 * index); }
    [[nodiscard]] QToolButton *menuButton() const { return m_bar->findChild<QToolButton *>(); }
    void type(QWidget *button, Qt::Key key);
    void chooseFirst(const std::function<void()> &open);

    const QString m_path = "home/a somewhat longer name/folder";
    std::unique_ptr<QWidget> m_window;
    QPointer<KovaButtonPath> m_bar;
};

Q_DECLARE_METATYPE(std::function<void(KovaButtonPathLifetimeTest *)>)

void KovaButtonPathLifetimeTest::init()
{
    m_window = std::make_unique<QWidget>();
    m_bar = new KovaButtonPath(m_window.get());
    m_bar->resize(140, m_bar->height());
    m_window->resize(200, 100);
    showActive(m_window.get());
    m_bar->refresh(m_path);
    QVERIFY(menuButton()->isVisible());
}

void KovaButtonPathLifetimeTest::type(QWidget *button, Qt::Key key)
{
    button->setFocus();
    press(button, key);
}

void KovaButtonPathLifetimeTest::chooseFirst(const std::function<void()> &open)
{
    QTimer::singleShot(0, qApp, [menu = QPointer<QMenu>(menuButton()->menu())] {
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    open();
}

void KovaButtonPathLifetimeTest::addWays()
{
    QTest::addColumn<Way>("pick");
    const auto row = [](const char *name, const Way &pick) { QTest::newRow(name) << pick; };
    row("click", [](auto *test) {
        click(test->name(2), test->name(2)->rect().bottomRight() - QPoint(3, 10));
    });
    row("space bar", [](auto *test) { test->type(test->name(2), Qt::Key_Space); });
    row("return", [](auto *test) { test->type(test->name(2), Qt::Key_Return); });
    row("menu", [](auto *test) { test->chooseFirst([test] { click(test->menuButton()); }); });
    row("menu by return", [](auto *test) {
        test->chooseFirst([test] { test->type(test->menuButton(), Qt::Key_Return); });
    });
}

void KovaButtonPathLifetimeTest::ownerAnswersAtOnce()
{
    QFETCH(Way, pick);
    int answers = 0;
    connect(m_bar, &KovaButtonPath::sigUpdatePath, m_bar, [&] {
        ++answers;
        m_bar->slotUpdatePath(m_path);
    });
    for (int i = 0; i < 30; ++i)
        pick(this);
    QCOMPARE(answers, 30);
    QCOMPARE(m_bar->getPath(99), m_path);
}

void KovaButtonPathLifetimeTest::barEndsInItsSignal()
{
    QFETCH(Way, pick);
    connect(m_bar, &KovaButtonPath::sigUpdatePath, m_window.get(), [this] { delete m_bar; });
    pick(this);
    QVERIFY(!m_bar);
}

// The second click is for a menu that is closed by then, and whose entries the first one replaced.
void KovaButtonPathLifetimeTest::menuIsChosenFromTwiceWhileBusy()
{
    for (const QString &answer : {QString(), QString("a"), m_path}) {
        m_bar->refresh(m_path);
        QStringList picked;
        const auto answers =
            connect(m_bar, &KovaButtonPath::sigUpdatePath, m_bar, [&](const QString &path) {
                picked.append(path);
                m_bar->refresh(answer);
            });
        QTimer::singleShot(0, m_bar, [this] {
            QMenu *menu = menuButton()->menu();
            doubleClickWhileBusy(menu, menu->actionGeometry(menu->actions().last()).center());
        });
        click(menuButton());
        QCoreApplication::processEvents();
        QCOMPARE(picked, QStringList{"home/a somewhat longer name"});
        disconnect(answers);
    }
}

void KovaButtonPathLifetimeTest::pathChangesUnderTheOpenMenu()
{
    const QPointer<QMenu> menu = menuButton()->menu();
    QTimer::singleShot(0, m_bar, [this, menu] {
        QVERIFY(menu->isVisible());
        m_bar->refresh(m_path + "/deeper");
        QVERIFY(!menu->isVisible());
    });
    menuButton()->showMenu();
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(menuButton()->menu()->actions().constFirst()->text(), "home");
}

void KovaButtonPathLifetimeTest::barEndsUnderTheOpenMenu()
{
    const QPointer<QMenu> menu = menuButton()->menu();
    QTimer::singleShot(0, m_window.get(), [this] { delete m_bar; });
    menuButton()->showMenu();
    QVERIFY(!menu);
    QVERIFY(!QApplication::activePopupWidget());
}

QTEST_MAIN(KovaButtonPathLifetimeTest)
#include "kova-button-path-lifetime-test.moc"
