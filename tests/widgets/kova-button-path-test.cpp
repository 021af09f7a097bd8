#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QAccessible>
#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {

// The buttons of the folders, from the root down.
QList<QPushButton *> nameButtons(const KovaButtonPath &bar)
{
    QList<QPushButton *> names;
    for (int column = 0; column < bar.columnCount(); column += 2)
        names.append(qobject_cast<QPushButton *>(bar.cellWidget(0, column)));
    return names;
}

QToolButton *folderButton(const KovaButtonPath &bar)
{
    return bar.findChild<QToolButton *>();
}

QRect inWindow(const QWidget *widget)
{
    return {widget->mapTo(widget->window(), QPoint(0, 0)), widget->size()};
}

QString accessibleName(QWidget *widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

void collect(QAccessibleInterface *interface, QHash<QObject *, QAccessible::Role> *found)
{
    found->insert(interface->object(), interface->role());
    for (int i = 0; i < interface->childCount(); ++i)
        collect(interface->child(i), found);
}

const QString deepPath = QStringLiteral("/home/ada/Documents/Correspondence/2024/Letters to the "
                                        "publisher/Drafts");

} // namespace

class KovaButtonPathTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup() { m_window.reset(); }
    void splitsPaths_data();
    void splitsPaths();
    void sizesButtons();
    void showsAwkwardNames_data();
    void showsAwkwardNames();
    void clickingAFolderTellsItsPath();
    void rowThatFitsHasNoMenu();
    void menuListsWhatIsOutOfSight();
    void aPressDoesNotScroll();
    void choosingFromTheMenuTellsThePath();
    void arrowsAreNarrow();
    void isWalkedByKeyboard();
    void refreshKeepsTheFocus();
    void noFolderIsTheDefaultOfADialog();
    void isAToolBarToScreenReaders();
    void survivesAScreenReaderFromTheStart();

private:
    void show(const QString &path);
    void press(Qt::Key key) { QTest::keyClick(m_window->windowHandle(), key); }

    std::unique_ptr<QWidget> m_window;
    QLineEdit *m_before = nullptr;
    KovaButtonPath *m_bar = nullptr;
    QLineEdit *m_after = nullptr;
};

void KovaButtonPathTest::init()
{
    m_window = std::make_unique<QWidget>();
    auto *layout = new QVBoxLayout(m_window.get());
    m_before = new QLineEdit;
    m_bar = new KovaButtonPath(nullptr);
    m_after = new QLineEdit;
    for (QWidget *widget : {static_cast<QWidget *>(m_before), static_cast<QWidget *>(m_bar),
                            static_cast<QWidget *>(m_after)})
        layout->addWidget(widget);
    m_window->resize(kovaPx(320), kovaPx(160));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_before->setFocus();
}

void KovaButtonPathTest::show(const QString &path)
{
    m_bar->refresh(path);
    QCoreApplication::processEvents();
}

void KovaButtonPathTest::splitsPaths_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("shown");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("root") << QStringLiteral("/") << QString();
    QTest::newRow("slashes") << QStringLiteral("///") << QString();
    QTest::newRow("one") << QStringLiteral("/home") << QStringLiteral("home");
    QTest::newRow("gaps") << QStringLiteral("/a//b/") << QStringLiteral("a/b");
}

void KovaButtonPathTest::splitsPaths()
{
    QFETCH(QString, path);
    QFETCH(QString, shown);
    show(deepPath);
    show(path);
    const int folders = shown.isEmpty() ? 0 : shown.count(QLatin1Char('/')) + 1;
    QCOMPARE(m_bar->rowCount(), 1);
    QCOMPARE(m_bar->columnCount(), qMax(0, 2 * folders - 1));
    QCOMPARE(m_bar->findChildren<QPushButton *>().size(), m_bar->columnCount());
    QCOMPARE(m_bar->getPath(m_bar->columnCount() - 1), shown);
    QCOMPARE(m_bar->getPath(99), shown);
    QCOMPARE(m_bar->getPath(-1), QString());
    QVERIFY(!folderButton(*m_bar)->isVisible());
}

void KovaButtonPathTest::sizesButtons()
{
    show(QStringLiteral("home/ada"));
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
    // The row fills the bar: there is nothing to scroll up or down.
    QCOMPARE(m_bar->verticalScrollBar()->maximum(), 0);
    QVERIFY(!m_bar->verticalScrollBar()->isVisible());
}

void KovaButtonPathTest::showsAwkwardNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("ampersand") << QStringLiteral("R&D");
    QTest::newRow("ampersands") << QStringLiteral("&a&&b&&&");
    QTest::newRow("blanks") << QStringLiteral("  a  b ");
    QTest::newRow("right to left") << QStringLiteral("מסמכים (2)");
    QTest::newRow("emoji") << QStringLiteral("📁 photos 👩‍👩‍👧");
    QTest::newRow("markup") << QStringLiteral("<b>bold<b> %1");
    QTest::newRow("long") << QString(300, QLatin1Char('x'));
}

void KovaButtonPathTest::showsAwkwardNames()
{
    QFETCH(QString, name);
    show(name + QLatin1Char('/') + name + QLatin1String("/end"));
    QPushButton *button = nameButtons(*m_bar).at(1);
    QCOMPARE(accessibleName(button), name);
    QVERIFY(button->shortcut().isEmpty());
    QCOMPARE(m_bar->getPath(2), name + QLatin1Char('/') + name);
    if (folderButton(*m_bar)->isVisible())
        QCOMPARE(folderButton(*m_bar)->menu()->actions().constFirst()->text(), button->text());
}

void KovaButtonPathTest::clickingAFolderTellsItsPath()
{
    QSignalSpy picked(m_bar, &KovaButtonPath::sigUpdatePath);
    show(QStringLiteral("/a/b/c"));
    QWindow *handle = m_window->windowHandle();
    const QStringList expected = {QStringLiteral("a"), QStringLiteral("a/b"),
                                  QStringLiteral("a/b/c")};
    for (int i = 0; i < 3; ++i) {
        QTest::mouseClick(handle, Qt::LeftButton, {}, inWindow(nameButtons(*m_bar).at(i)).center());
        QCOMPARE(picked.count(), i + 1);
        QCOMPARE(picked.at(i).at(0).toString(), expected.at(i));
    }
    QTest::mouseClick(handle, Qt::LeftButton, {}, inWindow(m_bar->cellWidget(0, 1)).center());
    QCOMPARE(picked.count(), 3);
    // The bar waits for its owner.
    QCOMPARE(m_bar->getPath(99), QStringLiteral("a/b/c"));
    m_bar->slotUpdatePath(QStringLiteral("x"));
    QCOMPARE(m_bar->getPath(99), QStringLiteral("x"));
}

void KovaButtonPathTest::rowThatFitsHasNoMenu()
{
    m_window->resize(kovaPx(1600), m_window->height());
    show(deepPath);
    QVERIFY(!folderButton(*m_bar)->isVisible());
    const int row = nameButtons(*m_bar).constLast()->geometry().right() + 1;
    const int frame = m_bar->width() - m_bar->viewport()->width();
    const int margins = m_window->width() - m_bar->width();

    m_window->resize(row + frame + margins, m_window->height());
    QCOMPARE(m_bar->viewport()->width(), row);
    show(deepPath);
    QVERIFY(!folderButton(*m_bar)->isVisible());
    QCOMPARE(m_bar->horizontalScrollBar()->maximum(), 0);

    m_window->resize(m_window->width() - 1, m_window->height());
    show(deepPath);
    QVERIFY(folderButton(*m_bar)->isVisible());
    QCOMPARE(folderButton(*m_bar)->menu()->actions().size(), 1);
    QCOMPARE(folderButton(*m_bar)->menu()->actions().constFirst()->text(), QStringLiteral("home"));
}

void KovaButtonPathTest::menuListsWhatIsOutOfSight()
{
    // Wide and narrow, so that the edge of the view cuts through every kind of column.
    for (int width = kovaPx(60); width < kovaPx(560); width += 3) {
        m_window->resize(width, m_window->height());
        show(deepPath);
        const QList<QPushButton *> names = nameButtons(*m_bar);
        QToolButton *button = folderButton(*m_bar);
        QCOMPARE(names.constLast()->geometry().right() + 1, m_bar->viewport()->width());
        QVERIFY(button->isVisible());
        QCOMPARE(button->geometry(), QRect(kovaPx(1), kovaPx(1), kovaPx(26), kovaPx(26)));

        // Those that do not show at all, and the first one that does.
        QStringList hidden;
        for (const QPushButton *name : names) {
            hidden.append(name->text());
            if (name->geometry().right() >= 0)
                break;
        }
        QStringList listed;
        for (const QAction *action : button->menu()->actions())
            listed.append(action->text());
        QCOMPARE(listed, hidden);
        QCOMPARE(accessibleName(button), hidden.join(QLatin1Char('/')));
    }
}

void KovaButtonPathTest::aPressDoesNotScroll()
{
    show(QStringLiteral("first/") + QString(100, QLatin1Char('x')));
    QSignalSpy picked(m_bar, &KovaButtonPath::sigUpdatePath);
    QPushButton *last = nameButtons(*m_bar).at(1);
    QVERIFY(last->x() < 0);
    QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {},
                      inWindow(last).bottomRight() - QPoint(5, 5));
    QCOMPARE(last->geometry().right() + 1, m_bar->viewport()->width());
    QCOMPARE(picked.count(), 1);
}

void KovaButtonPathTest::choosingFromTheMenuTellsThePath()
{
    QSignalSpy picked(m_bar, &KovaButtonPath::sigUpdatePath);
    show(deepPath);
    QToolButton *button = folderButton(*m_bar);
    for (const bool byKeyboard : {false, true}) {
        QTimer::singleShot(0, button, [button] {
            QTest::keyClick(button->menu(), Qt::Key_Down);
            QTest::keyClick(button->menu(), Qt::Key_Down);
            QTest::keyClick(button->menu(), Qt::Key_Return);
        });
        if (byKeyboard) {
            button->setFocus();
            press(Qt::Key_Return);
        } else {
            QTest::mousePress(m_window->windowHandle(), Qt::LeftButton, {},
                              inWindow(button).center());
        }
        QCOMPARE(picked.count(), 1);
        QCOMPARE(picked.takeFirst().at(0).toString(), QStringLiteral("home/ada"));
    }
}

void KovaButtonPathTest::arrowsAreNarrow()
{
    show(QStringLiteral("a/b/c"));
    for (int column = 1; column < m_bar->columnCount(); column += 2)
        QCOMPARE(m_bar->columnWidth(column), kovaPx(6));
}

void KovaButtonPathTest::isWalkedByKeyboard()
{
    QSignalSpy picked(m_bar, &KovaButtonPath::sigUpdatePath);
    show(deepPath);
    press(Qt::Key_Tab);
    QCOMPARE(m_window->focusWidget(), folderButton(*m_bar));
    for (QPushButton *name : nameButtons(*m_bar)) {
        press(Qt::Key_Tab);
        QCOMPARE(m_window->focusWidget(), name);
        QVERIFY(!name->visibleRegion().isEmpty());
    }
    QVERIFY(m_bar->rect().contains(folderButton(*m_bar)->geometry()));
    press(Qt::Key_Space);
    QCOMPARE(picked.takeFirst().at(0).toString(), deepPath.mid(1));
    press(Qt::Key_Left);
    press(Qt::Key_Return);
    QCOMPARE(picked.takeFirst().at(0).toString(),
             deepPath.mid(1, deepPath.lastIndexOf(QLatin1Char('/')) - 1));
    press(Qt::Key_Right);
    press(Qt::Key_Tab);
    QCOMPARE(m_window->focusWidget(), m_after);
    QTest::keyClick(m_window->windowHandle(), Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(m_window->focusWidget(), nameButtons(*m_bar).constLast());

    m_bar->setFocus();
    show(QStringLiteral("a/b"));
    m_before->setFocus();
    press(Qt::Key_Tab);
    QCOMPARE(m_window->focusWidget(), nameButtons(*m_bar).constFirst());
}

void KovaButtonPathTest::refreshKeepsTheFocus()
{
    connect(m_bar, &KovaButtonPath::sigUpdatePath, m_bar, &KovaButtonPath::slotUpdatePath);
    show(QStringLiteral("a/b/c/d"));
    nameButtons(*m_bar).at(1)->setFocus();
    press(Qt::Key_Space);
    QCOMPARE(m_bar->getPath(99), QStringLiteral("a/b"));
    QCOMPARE(m_window->focusWidget(), nameButtons(*m_bar).at(1));
    // The same again with the next key, on a button that was made in between.
    nameButtons(*m_bar).at(0)->setFocus();
    press(Qt::Key_Return);
    QCOMPARE(m_bar->getPath(99), QStringLiteral("a"));
    QCOMPARE(m_window->focusWidget(), nameButtons(*m_bar).at(0));

    show(deepPath);
    folderButton(*m_bar)->setFocus();
    show(QStringLiteral("a/b"));
    QCOMPARE(m_window->focusWidget(), nameButtons(*m_bar).at(1));
    m_before->setFocus();
    show(QStringLiteral("a/b/c"));
    QCOMPARE(m_window->focusWidget(), m_before);
}

void KovaButtonPathTest::noFolderIsTheDefaultOfADialog()
{
    QDialog dialog;
    auto *layout = new QVBoxLayout(&dialog);
    auto *edit = new QLineEdit;
    auto *bar = new KovaButtonPath(nullptr);
    auto *box = new QDialogButtonBox(QDialogButtonBox::Close);
    layout->addWidget(bar);
    layout->addWidget(edit);
    layout->addWidget(box);
    connect(box, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    bar->refresh(QStringLiteral("a/b"));
    QSignalSpy picked(bar, &KovaButtonPath::sigUpdatePath);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    edit->setFocus();
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
    QCOMPARE(picked.count(), 0);
    QVERIFY(!dialog.isVisible());
}

void KovaButtonPathTest::isAToolBarToScreenReaders()
{
    show(deepPath);
    QHash<QObject *, QAccessible::Role> found;
    collect(QAccessible::queryAccessibleInterface(m_bar), &found);
    QCOMPARE(found.value(m_bar), QAccessible::ToolBar);
    QCOMPARE(found.value(folderButton(*m_bar)), QAccessible::ButtonMenu);
    for (int column = 0; column < m_bar->columnCount(); ++column)
        QCOMPARE(found.value(m_bar->cellWidget(0, column)),
                 column % 2 ? QAccessible::Separator : QAccessible::PushButton);
}

void KovaButtonPathTest::survivesAScreenReaderFromTheStart()
{
    QAccessible::setActive(true);
    KovaButtonPath bar(nullptr);
    bar.resize(200, bar.height());
    bar.show();
    bar.refresh(deepPath);
    QCOMPARE(QAccessible::queryAccessibleInterface(&bar)->role(), QAccessible::ToolBar);
    nameButtons(bar).constFirst()->setFocus();
    bar.refresh(QStringLiteral("a"));
    QAccessible::setActive(false);
}

QTEST_MAIN(KovaButtonPathTest)
#include "kova-button-path-test.moc"
