// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

namespace {

// The buttons of the folders, from the root down.
QList<QPushButton *> nameButtons(const KovaButtonPath &bar)
{
    QList<QPushButton *> names;
    for (int column = 0; column < bar.columnCount(); column += 2)
        names.append(qobject_cast<QPushButton *>(bar.cellWidget(0, column)));
    return names;
}

// Decides about its menu whenever it gets another width.
class FollowingBar : public KovaButtonPath
{
public:
    int refreshes = 0;

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        KovaButtonPath::resizeEvent(event);
        ++refreshes;
        refresh("home/ada/Documents");
    }
};

const QString deepPath = "/home/ada/Documents/Correspondence/2024/Letters to the publisher/Drafts";
const QString longName = "home/" + QString(40, 'x');

using Way = std::function<void()>;

} // namespace

Q_DECLARE_METATYPE(Way)

// The row of folders: what it shows, how it is used, and owners that answer from inside the click
// of a button which their answer deletes.
class KovaButtonPathTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { m_window.reset(); }
    void splitsPaths();
    void sizesAndDescribesButtons();
    void showsAwkwardNames();
    void clickingAFolderTellsItsPath();
    void rowThatFitsHasNoMenu();
    void mayBeRefreshedWheneverItIsResized();
    void menuListsWhatIsOutOfSight();
    void isWalkedByKeyboard();
    void isMirroredFromRightToLeft();
    void refreshKeepsTheFocus();
    void ownerAnswersAtOnceThenEndsTheBar_data();
    void ownerAnswersAtOnceThenEndsTheBar();
    void menuIsChosenFromTwiceWhileBusy();
    void changesUnderTheOpenMenu();

private:
    void show(const QString &path);
    void type(QWidget *button, Qt::Key key);
    void chooseFirst(const std::function<void()> &open);
    [[nodiscard]] QToolButton *folderButton() const { return m_bar->findChild<QToolButton *>(); }
    [[nodiscard]] QPushButton *lastName() const { return nameButtons(*m_bar).constLast(); }

    // Where the part of the bar begins that the button of the menu leaves free.
    [[nodiscard]] int freeFrom() const { return folderButton()->geometry().right() + 1; }

    std::unique_ptr<QDialog> m_window;
    QLineEdit *m_before = nullptr;
    QPointer<KovaButtonPath> m_bar;
    QLineEdit *m_after = nullptr;
};

void KovaButtonPathTest::initTestCase()
{
    setUpHost();
    // With a screen reader running, Qt asks for the interface while the bar is made.
    QAccessible::setActive(true);
}

void KovaButtonPathTest::init()
{
    m_window = std::make_unique<QDialog>();
    auto *layout = new QVBoxLayout(m_window.get());
    layout->addWidget(m_before = new QLineEdit);
    layout->addWidget(m_bar = new KovaButtonPath(nullptr));
    layout->addWidget(m_after = new QLineEdit);
    m_window->resize(kovaPx(320), kovaPx(160));
    showActive(m_window.get());
    m_before->setFocus();
}

void KovaButtonPathTest::show(const QString &path)
{
    m_bar->refresh(path);
    QCoreApplication::processEvents();
}

void KovaButtonPathTest::splitsPaths()
{
    const QPair<QString, QString> paths[] = {
        {"", ""}, {"/", ""}, {"///", ""}, {"/home", "home"}, {"/a//b/", "a/b"}};
    for (const auto &[path, shown] : paths) {
        show(deepPath);
        show(path);
        const int folders = shown.isEmpty() ? 0 : shown.count('/') + 1;
        QVERIFY2(m_bar->columnCount() == qMax(0, 2 * folders - 1), qPrintable(path));
        QCOMPARE(m_bar->findChildren<QPushButton *>().size(), m_bar->columnCount());
        QCOMPARE(m_bar->getPath(99), shown);
        QCOMPARE(m_bar->getPath(-1), "");
        QVERIFY2(!folderButton()->isVisible(), qPrintable(path));
    }
}

void KovaButtonPathTest::sizesAndDescribesButtons()
{
    show("home/ada");
    const double scale = qEnvironmentVariableIntValue("QT_FONT_DPI") / 96.0;
    const QFontMetrics metrics((QPushButton().font()));
    QCOMPARE(m_bar->height(), int(28 * scale));
    int left = 0;
    for (const QPushButton *button : nameButtons(*m_bar)) {
        const int width = int((metrics.horizontalAdvance(button->text()) + 16) * scale);
        QCOMPARE(button->geometry(), QRect(left, 0, width, int(26 * scale)));
        QVERIFY(button->isVisible() && button->isFlat());
        left += width + int(6 * scale);
    }
    QCOMPARE(m_bar->cellWidget(0, 1)->size(), QSize(int(6 * scale), int(28 * scale)));
    QVERIFY2(!m_bar->verticalScrollBar()->isVisible(), "there is nothing to scroll up or down");

    QVector<QAccessible::Role> roles;
    for (QWidget *part :
         {static_cast<QWidget *>(m_bar), m_bar->cellWidget(0, 0), m_bar->cellWidget(0, 1)})
        roles.append(QAccessible::queryAccessibleInterface(part)->role());
    QCOMPARE(roles,
             (QVector{QAccessible::ToolBar, QAccessible::PushButton, QAccessible::Separator}));
}

void KovaButtonPathTest::showsAwkwardNames()
{
    for (const QString &name :
         QStringList{"R&D", "&a&&b&&&", "  a  b ", "מסמכים (2)", "📁 photos 👩‍👩‍👧",
                     "<b>bold<b> %1", QString(300, 'x')}) {
        show(name + '/' + name + "/end");
        QPushButton *button = nameButtons(*m_bar).at(1);
        QCOMPARE(spoken(button), name);
        QVERIFY2(button->shortcut().isEmpty(), qPrintable(name));
        QCOMPARE(m_bar->getPath(2), name + '/' + name);
        if (folderButton()->isVisible())
            QCOMPARE(folderButton()->menu()->actions().constFirst()->text(), button->text());
    }
}

void KovaButtonPathTest::clickingAFolderTellsItsPath()
{
    QSignalSpy picked(m_bar, &KovaButtonPath::sigUpdatePath);
    show("/a/b/c");
    for (int column = 0; column < m_bar->columnCount(); ++column)
        click(m_bar->cellWidget(0, column));
    QCOMPARE(picked, (QList<QVariantList>{{"a"}, {"a/b"}, {"a/b/c"}}));
    // The bar waits for its owner, and no folder is the default button of a dialog.
    QCOMPARE(m_bar->getPath(99), "a/b/c");
    m_before->setFocus();
    press(m_before, Qt::Key_Return);
    QCOMPARE(picked.count(), 3);

    show("first/" + QString(100, 'x'));
    click(lastName(), lastName()->rect().bottomRight() - QPoint(5, 5));
    QVERIFY2(lastName()->geometry().right() + 1 == m_bar->viewport()->width(),
             "a press scrolls nothing");
    QCOMPARE(picked.count(), 4);
}

void KovaButtonPathTest::rowThatFitsHasNoMenu()
{
    m_window->resize(kovaPx(1600), m_window->height());
    show(deepPath);
    const int frame = m_bar->width() - m_bar->viewport()->width();
    const int row = lastName()->geometry().right() + 1;
    for (const int missing : {0, 1}) {
        m_bar->setFixedWidth(frame + row - missing);
        show(deepPath);
        QCOMPARE(folderButton()->menu()->actions().size(), missing);
        QCOMPARE(folderButton()->isVisible(), missing == 1);
    }
}

void KovaButtonPathTest::mayBeRefreshedWheneverItIsResized()
{
    FollowingBar bar;
    bar.show();
    for (const bool narrow : {false, true, false}) {
        bar.resize(kovaPx(narrow ? 100 : 800), bar.height());
        QTRY_COMPARE(bar.findChild<QToolButton *>()->isVisible(), narrow);
    }
    QVERIFY(bar.refreshes < 20);
}

void KovaButtonPathTest::menuListsWhatIsOutOfSight()
{
    // Wide and narrow, so that the edge of the view cuts through every kind of column.
    for (int width = kovaPx(60); width < kovaPx(560); width += 5) {
        m_window->resize(width, m_window->height());
        show(deepPath);
        QCOMPARE(lastName()->geometry().right() + 1, m_bar->viewport()->width());
        QVERIFY(folderButton()->isVisible());
        QCOMPARE(folderButton()->geometry(), QRect(kovaPx(1), kovaPx(1), kovaPx(26), kovaPx(26)));

        // Those that do not show at all, and the first one that does.
        QStringList hidden;
        for (const QPushButton *name : nameButtons(*m_bar)) {
            hidden.append(name->text());
            if (name->geometry().right() >= 0)
                break;
        }
        QStringList listed;
        for (const QAction *action : folderButton()->menu()->actions())
            listed.append(action->text());
        QCOMPARE(listed, hidden);
        QCOMPARE(spoken(folderButton()), hidden.join('/'));
    }
}

void KovaButtonPathTest::isWalkedByKeyboard()
{
    QSignalSpy picked(m_bar, &KovaButtonPath::sigUpdatePath);
    show(deepPath);
    press(m_bar, Qt::Key_Tab);
    QCOMPARE(m_window->focusWidget(), folderButton());
    for (QPushButton *name : nameButtons(*m_bar)) {
        press(m_bar, Qt::Key_Tab);
        QCOMPARE(m_window->focusWidget(), name);
        const QRect place(name->mapTo(m_bar, QPoint()), name->size());
        QVERIFY(place.left() >= freeFrom());
        QVERIFY(place.right() < m_bar->width() || place.left() == freeFrom());
    }
    press(m_bar, Qt::Key_Space);
    QCOMPARE(picked.takeFirst(), QVariantList{deepPath.mid(1)});
    press(m_bar, Qt::Key_Left);
    press(m_bar, Qt::Key_Return);
    QCOMPARE(picked.takeFirst(), QVariantList{deepPath.mid(1, deepPath.lastIndexOf('/') - 1)});
    press(m_bar, Qt::Key_Right);
    press(m_bar, Qt::Key_Tab);
    QCOMPARE(m_window->focusWidget(), m_after);
    press(m_bar, Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(m_window->focusWidget(), lastName());
}

void KovaButtonPathTest::isMirroredFromRightToLeft()
{
    show(deepPath);
    QRect button = folderButton()->geometry();
    const auto arrow = [this](int column) {
        const auto *separator = qobject_cast<QPushButton *>(m_bar->cellWidget(0, column));
        return separator->icon().pixmap(separator->iconSize()).toImage();
    };
    const QImage backward = arrow(1).mirrored(true, false);
    QVERIFY(arrow(1) != backward);
    m_bar->setLayoutDirection(Qt::RightToLeft);
    QCOMPARE(arrow(1), backward);
    show(deepPath);
    QCOMPARE(arrow(1), backward);
    button.moveRight(m_bar->width() - 1 - button.left());
    QCOMPARE(folderButton()->geometry(), button);
    QCOMPARE(lastName()->x(), 0);

    folderButton()->setFocus();
    press(m_bar, Qt::Key_Tab);
    const QPushButton *first = nameButtons(*m_bar).constFirst();
    for (const int more : {0, 20}) {
        m_window->resize(m_window->width() + more, m_window->height());
        QCoreApplication::processEvents();
        QCOMPARE(first->mapTo(m_bar, first->rect().topRight()).x(), folderButton()->x() - 1);
    }
}

void KovaButtonPathTest::refreshKeepsTheFocus()
{
    connect(m_bar, &KovaButtonPath::sigUpdatePath, m_bar, &KovaButtonPath::slotUpdatePath);
    show("a/b/c/d");
    // The second time on a button that was made in between.
    for (const int index : {1, 0}) {
        nameButtons(*m_bar).at(index)->setFocus();
        press(m_bar, index ? Qt::Key_Space : Qt::Key_Return);
        QCOMPARE(m_bar->getPath(99), index ? "a/b" : "a");
        QCOMPARE(m_window->focusWidget(), nameButtons(*m_bar).at(index));
    }

    show(deepPath);
    nameButtons(*m_bar).constFirst()->setFocus();
    show(deepPath);
    QVERIFY(nameButtons(*m_bar).constFirst()->hasFocus());
    QCOMPARE(nameButtons(*m_bar).constFirst()->mapTo(m_bar, QPoint()).x(), freeFrom());
    folderButton()->setFocus();
    show("a/b");
    QCOMPARE(m_window->focusWidget(), nameButtons(*m_bar).at(1));
    m_before->setFocus();
    show("a/b/c");
    QCOMPARE(m_window->focusWidget(), m_before);
}

void KovaButtonPathTest::type(QWidget *button, Qt::Key key)
{
    button->setFocus();
    press(button, key);
}

void KovaButtonPathTest::chooseFirst(const std::function<void()> &open)
{
    QTimer::singleShot(0, qApp, [menu = QPointer<QMenu>(folderButton()->menu())] {
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    open();
}

void KovaButtonPathTest::ownerAnswersAtOnceThenEndsTheBar_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<Way>("pick");
    const QString last = longName + "/folder";
    QTest::newRow("click") << last << Way([this] { click(lastName()); });
    QTest::newRow("space bar") << last << Way([this] { type(lastName(), Qt::Key_Space); });
    QTest::newRow("return") << last << Way([this] { type(lastName(), Qt::Key_Return); });
    const Way clickMenu = [this] { click(folderButton()); };
    const Way typeMenu = [this] { type(folderButton(), Qt::Key_Return); };
    QTest::newRow("menu") << "home" << Way([=] { chooseFirst(clickMenu); });
    QTest::newRow("menu by return") << "home" << Way([=] { chooseFirst(typeMenu); });
}

void KovaButtonPathTest::ownerAnswersAtOnceThenEndsTheBar()
{
    QFETCH(QString, path);
    QFETCH(Way, pick);
    show(longName + "/folder");
    QStringList picked;
    const auto answers = connect(m_bar, &KovaButtonPath::sigUpdatePath, m_bar, [&](auto folder) {
        picked.append(folder);
        m_bar->slotUpdatePath(longName + "/folder");
    });
    for (int i = 0; i < 30; ++i)
        pick();
    QCOMPARE(picked.toVector(), QVector<QString>(30, path));

    disconnect(answers);
    connect(m_bar, &KovaButtonPath::sigUpdatePath, m_window.get(), [this] { delete m_bar; });
    pick();
    QVERIFY(!m_bar);
}

// The second click is for a menu that is closed by then, and whose entries the first one replaced.
void KovaButtonPathTest::menuIsChosenFromTwiceWhileBusy()
{
    for (const QString &answer : {QString(), QString("a"), longName + "/folder"}) {
        show(longName + "/folder");
        QSignalSpy picked(m_bar, &KovaButtonPath::sigUpdatePath);
        const auto answers =
            connect(m_bar, &KovaButtonPath::sigUpdatePath, m_bar, [&] { m_bar->refresh(answer); });
        QTimer::singleShot(0, m_bar, [this] {
            QMenu *menu = folderButton()->menu();
            doubleClickWhileBusy(menu, menu->actionGeometry(menu->actions().last()).center());
        });
        click(folderButton());
        QCoreApplication::processEvents();
        QVERIFY2(picked == QList<QVariantList>{{longName}}, qPrintable(answer));
        disconnect(answers);
    }
}

void KovaButtonPathTest::changesUnderTheOpenMenu()
{
    show(deepPath);
    QPointer<QMenu> menu = folderButton()->menu();
    bool wasOpen = false;
    QTimer::singleShot(0, m_bar, [&] {
        wasOpen = menu->isVisible();
        m_bar->refresh(deepPath + "/deeper");
    });
    folderButton()->showMenu();
    QVERIFY(wasOpen);
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(folderButton()->menu()->actions().constFirst()->text(), "home");

    menu = folderButton()->menu();
    QTimer::singleShot(0, m_window.get(), [this] { delete m_bar; });
    folderButton()->showMenu();
    QVERIFY(!menu);
    QVERIFY(!QApplication::activePopupWidget());
}

QTEST_MAIN(KovaButtonPathTest)
#include "kova-button-path-test.moc"
