#include <kovakit-qt/widgets/kova-button-path.h>

#include "support/test-host.h"

#include <QPointer>
#include <QtTest>
#include <QtWidgets>

#include <memory>

// The owner of a bar answers from inside the click of a button that its answer deletes.
class KovaButtonPathLifetimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup() { m_window.reset(); }
    void ownerAnswersClicks();
    void ownerAnswersKeys();
    void ownerAnswersTheMenu();
    void barEndsInItsSignal_data();
    void barEndsInItsSignal();
    void pathChangesUnderTheOpenMenu();
    void barEndsUnderTheOpenMenu();

private:
    QWidget *name(int index) const { return m_bar->cellWidget(0, 2 * index); }
    QToolButton *folderButton() const { return m_bar->findChild<QToolButton *>(); }
    void click(QWidget *button);
    void press(Qt::Key key) { QTest::keyClick(m_window->windowHandle(), key); }
    void chooseFirst(const std::function<void()> &open);

    std::unique_ptr<QWidget> m_window;
    QPointer<KovaButtonPath> m_bar;
};

namespace {

const QString path = QStringLiteral("home/a somewhat longer name/folder");

} // namespace

void KovaButtonPathLifetimeTest::init()
{
    m_window = std::make_unique<QWidget>();
    m_bar = new KovaButtonPath(m_window.get());
    m_bar->resize(140, m_bar->height());
    m_window->resize(200, 100);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_bar->refresh(path);
    QVERIFY(folderButton()->isVisible());
}

void KovaButtonPathLifetimeTest::click(QWidget *button)
{
    const QPoint at = button->mapTo(m_window.get(), QPoint(button->width() - 3, 10));
    QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {}, at);
}

void KovaButtonPathLifetimeTest::chooseFirst(const std::function<void()> &open)
{
    QTimer::singleShot(0, qApp, [menu = QPointer<QMenu>(folderButton()->menu())] {
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    open();
}

void KovaButtonPathLifetimeTest::ownerAnswersClicks()
{
    int answers = 0;
    connect(m_bar, &KovaButtonPath::sigUpdatePath, m_bar, [&](const QString &picked) {
        ++answers;
        m_bar->slotUpdatePath(picked.contains(QLatin1Char('/')) ? QStringLiteral("a/b") : path);
    });
    for (int i = 0; i < 1000; ++i)
        click(name(1));
    QCOMPARE(answers, 1000);
    QCOMPARE(m_bar->getPath(99), QStringLiteral("a/b"));
}

void KovaButtonPathLifetimeTest::ownerAnswersKeys()
{
    int answers = 0;
    connect(m_bar, &KovaButtonPath::sigUpdatePath, m_bar, [&](const QString &picked) {
        ++answers;
        m_bar->slotUpdatePath(picked);
    });
    name(2)->setFocus();
    for (int i = 0; i < 100; ++i) {
        press(Qt::Key_Space);
        press(Qt::Key_Return);
    }
    QCOMPARE(answers, 200);
    QCOMPARE(m_bar->getPath(99), path);
}

void KovaButtonPathLifetimeTest::ownerAnswersTheMenu()
{
    int answers = 0;
    connect(m_bar, &KovaButtonPath::sigUpdatePath, m_bar, [&](const QString &picked) {
        answers += picked == QLatin1String("home");
        m_bar->slotUpdatePath(path);
    });
    for (int i = 0; i < 300; ++i)
        chooseFirst([this] { folderButton()->showMenu(); });
    QCOMPARE(answers, 300);
}

void KovaButtonPathLifetimeTest::barEndsInItsSignal_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("click") << 0;
    QTest::newRow("space bar") << 1;
    QTest::newRow("return") << 2;
    QTest::newRow("menu") << 3;
    QTest::newRow("menu by return") << 4;
}

void KovaButtonPathLifetimeTest::barEndsInItsSignal()
{
    QFETCH(int, way);
    connect(m_bar, &KovaButtonPath::sigUpdatePath, m_window.get(), [this] { delete m_bar; });
    name(2)->setFocus();
    if (way == 0)
        click(name(2));
    else if (way <= 2)
        press(way == 1 ? Qt::Key_Space : Qt::Key_Return);
    else if (way == 3)
        chooseFirst([this] { click(folderButton()); });
    else
        chooseFirst([this] {
            folderButton()->setFocus();
            press(Qt::Key_Return);
        });
    QVERIFY(!m_bar);
}

void KovaButtonPathLifetimeTest::pathChangesUnderTheOpenMenu()
{
    const QPointer<QMenu> menu = folderButton()->menu();
    QTimer::singleShot(0, m_bar, [this, menu] {
        QVERIFY(menu->isVisible());
        m_bar->refresh(path + QLatin1String("/deeper"));
        QVERIFY(!menu->isVisible());
    });
    folderButton()->showMenu();
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(menu->actions().constFirst()->text(), QStringLiteral("home"));
}

void KovaButtonPathLifetimeTest::barEndsUnderTheOpenMenu()
{
    const QPointer<QMenu> menu = folderButton()->menu();
    QTimer::singleShot(0, m_window.get(), [this] { delete m_bar; });
    folderButton()->showMenu();
    QVERIFY(!menu);
    QVERIFY(!QApplication::activePopupWidget());
}

QTEST_MAIN(KovaButtonPathLifetimeTest)
#include "kova-button-path-lifetime-test.moc"
