// SPDX-License-Identifier: MIT

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
    void ownerAnswersAtOnceThenEndsTheBar();
    void menuIsChosenFromTwiceWhileBusy();
    void pathChangesUnderTheOpenMenu();
    void barEndsUnderTheOpenMenu();

private:
    [[nodiscard]] QWidget *name(int index) const { return m_bar->cellWidget(0, 2 * index); }
    [[nodiscard]] QToolButton *menuButton() const { return m_bar->findChild<QToolButton *>(); }
    void type(QWidget *button, Qt::Key key);
    void chooseFirst(const std::function<void()> &open);

    const QString m_path = "home/a somewhat longer name/folder";
    std::unique_ptr<QWidget> m_window;
    QPointer<KovaButtonPath> m_bar;
};

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

void KovaButtonPathLifetimeTest::ownerAnswersAtOnceThenEndsTheBar()
{
    const std::tuple<const char *, QString, std::function<void()>> ways[] = {
        {"click", m_path,
         [this] { click(name(2), name(2)->rect().bottomRight() - QPoint(3, 10)); }},
        {"space bar", m_path, [this] { type(name(2), Qt::Key_Space); }},
        {"return", m_path, [this] { type(name(2), Qt::Key_Return); }},
        {"menu", "home", [this] { chooseFirst([this] { click(menuButton()); }); }},
        {"menu by return", "home",
         [this] { chooseFirst([this] { type(menuButton(), Qt::Key_Return); }); }},
    };
    for (const auto &[way, path, pick] : ways) {
        init();
        QStringList picked;
        const auto answers =
            connect(m_bar, &KovaButtonPath::sigUpdatePath, m_bar, [&](auto folder) {
                picked.append(folder);
                m_bar->slotUpdatePath(m_path);
            });
        for (int i = 0; i < 30; ++i)
            pick();
        QVERIFY2(picked.size() == 30 && picked.count(path) == 30, way);

        disconnect(answers);
        connect(m_bar, &KovaButtonPath::sigUpdatePath, m_window.get(), [this] { delete m_bar; });
        pick();
        QVERIFY2(!m_bar, way);
    }
}

// The second click is for a menu that is closed by then, and whose entries the first one replaced.
void KovaButtonPathLifetimeTest::menuIsChosenFromTwiceWhileBusy()
{
    for (const QString &answer : {QString(), QString("a"), m_path}) {
        m_bar->refresh(m_path);
        QSignalSpy picked(m_bar, &KovaButtonPath::sigUpdatePath);
        const auto answers =
            connect(m_bar, &KovaButtonPath::sigUpdatePath, m_bar, [&] { m_bar->refresh(answer); });
        QTimer::singleShot(0, m_bar, [this] {
            QMenu *menu = menuButton()->menu();
            doubleClickWhileBusy(menu, menu->actionGeometry(menu->actions().last()).center());
        });
        click(menuButton());
        QCoreApplication::processEvents();
        QCOMPARE(picked, QList<QVariantList>{{"home/a somewhat longer name"}});
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
