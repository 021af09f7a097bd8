// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QtTest>
#include <QtWidgets>

namespace {

QAccessibleInterface *accessible(QObject *object)
{
    return QAccessible::queryAccessibleInterface(object);
}

QStringList actionsOf(QWidget *widget)
{
    QAccessibleActionInterface *actions = accessible(widget)->actionInterface();
    return actions ? actions->actionNames() : QStringList();
}

bool canBeUsed(QWidget *widget)
{
    QAccessibleInterface *interface = accessible(widget);
    return !actionsOf(widget).isEmpty() || interface->editableTextInterface()
        || interface->tableInterface() || interface->state().focusable
        || !interface->state().disabled;
}

// A window with everything that assistive technology can use, and a message over it.
class Window : public QMainWindow
{
public:
    Window()
    {
        setCentralWidget(new QWidget);
        new QVBoxLayout(centralWidget());
        for (QWidget *widget : all)
            centralWidget()->layout()->addWidget(widget);
        edit->setText("Photos");
        table->setItem(0, 0, new QTableWidgetItem("cell"));
        tabs->addTab("tab");
        combo->addItem("item");
        off->setEnabled(false);
        more->setMenu(&parentless);
        parentless.addAction("Remove");
        menu->addAction("Quit");
        show();
    }

    KovaMessageSheet *open(const QString &text)
    {
        auto *sheet = new KovaMessageSheet(KovaMessageSheet::Question, text, this);
        KovaMask::createMask(sheet, this, KovaMask::dimColor);
        sheet->showSheet();
        return sheet;
    }

    QMenu parentless;
    KovaButton *button = new KovaButton("Open", KovaButton::Standard);
    QPushButton *off = new QPushButton("Later");
    QCheckBox *check = new QCheckBox("Hidden files");
    QLineEdit *edit = new QLineEdit;
    QSlider *slider = new QSlider;
    QComboBox *combo = new QComboBox;
    QTableWidget *table = new QTableWidget(1, 1);
    QTabBar *tabs = new QTabBar;
    QToolButton *more = new QToolButton;
    QMenu *menu = menuBar()->addMenu("File");
    const QVector<QWidget *> all{button, off, check, edit, slider, combo, table, tabs, more};
};

// Keeps links to itself that would open in a browser.
class Browser : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl &url) { opened.append(url); }
};

} // namespace

class SheetAccessibleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void tellsWhatItSays();
    void followsLinks();
    void coversItsWindow();
    void comesBeforeEarlierPresses();
    void coversSheetsBelow();
    void survivesDeletions();
};

// The library listens from its first sheet on, to what only a screen reader would switch on.
void SheetAccessibleTest::initTestCase()
{
    setUpHost();
    Window window;
    window.open("first")->quit();
    QAccessible::setActive(true);
}

void SheetAccessibleTest::tellsWhatItSays()
{
    QWidget window;
    window.show();
    KovaMessageSheet sheet(KovaMessageSheet::Warning, "The drive is <b>full</b>.",
                           "Remove something.", &window);
    const QAccessibleInterface *dialog = accessible(&sheet);
    QCOMPARE(dialog->role(), QAccessible::Dialog);
    QCOMPARE(dialog->text(QAccessible::Name), QString("The drive is full."));
    QCOMPARE(dialog->text(QAccessible::Description), QString("Warning\nRemove something."));
    QVERIFY(!dialog->state().modal);
    sheet.showSheet();
    QVERIFY(dialog->state().modal);
    QVERIFY(accessible(sheet.button(QMessageBox::Ok))->state().defaultButton);
    sheet.quit();
    QVERIFY(!dialog->state().modal);
    sheet.setAccessibleDescription("the host's words");
    QCOMPARE(dialog->text(QAccessible::Description), QString("the host's words"));
}

void SheetAccessibleTest::followsLinks()
{
    Browser browser;
    QDesktopServices::setUrlHandler("kova", &browser, "open");
    MessageLabel label;
    label.setText("See <a href='kova:log'>the <b>log</b></a> or <a href='kova:help'>help</a>.");
    label.setTextInteractionFlags(Qt::LinksAccessibleByMouse);
    label.setOpenExternalLinks(true);
    QCOMPARE(accessible(&label)->text(QAccessible::Name), QString("See the log or help."));
    QCOMPARE(accessible(&label)->childCount(), 2);
    QAccessibleInterface *link = accessible(&label)->child(0);
    QCOMPARE(link->role(), QAccessible::Link);
    QCOMPARE(link->text(QAccessible::Name), QString("the log"));
    link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(browser.opened, QList<QUrl>{QUrl("kova:log")});
    label.setTextInteractionFlags(Qt::NoTextInteraction);
    QCOMPARE(link->actionInterface()->actionNames(), QStringList());
    label.setText("Nothing to see.");
    QCOMPARE(accessible(&label)->childCount(), 0);

    // By keyboard: to the button, to the text below, to its link, and into it.
    QWidget window;
    window.show();
    KovaMessageSheet sheet(KovaMessageSheet::Warning, "No copy.", "See <a href='kova:why'>why</a>.",
                           &window);
    sheet.showSheet();
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return})
        QTest::keyClick(window.focusWidget(), key);
    QTRY_COMPARE(browser.opened.last(), QUrl("kova:why"));
    QDesktopServices::unsetUrlHandler("kova");
}

void SheetAccessibleTest::coversItsWindow()
{
    Window window;
    Window other;
    QVector<QStringList> before;
    for (QWidget *widget : window.all)
        before.append(actionsOf(widget));
    for (QMenu *menu : {window.menu, &window.parentless})
        QVERIFY(accessible(menu)->child(0)->actionInterface());
    KovaMessageSheet *sheet = window.open("first");

    for (QWidget *widget : window.all)
        QVERIFY2(!canBeUsed(widget), widget->metaObject()->className());
    for (QWidget *parts : QWidgetList{window.table, window.tabs, window.menu, &window.parentless})
        QCOMPARE(accessible(parts)->childCount(), 0);
    QCOMPARE(accessible(window.menuBar())->childCount(), 0);
    QVERIFY(canBeUsed(sheet->button(QMessageBox::Ok)));
    QVERIFY(canBeUsed(other.button));
    QCOMPARE(accessible(window.button)->role(), QAccessible::Button);
    QCOMPARE(accessible(window.button)->text(QAccessible::Name), QString("Open"));

    // What the host does meanwhile. The first link installs a factory that Qt asks before others.
    window.off->setEnabled(true);
    QVERIFY(!canBeUsed(window.off));
    window.slider->setValue(7);
    QCOMPARE(accessible(window.slider)->valueInterface()->currentValue().toInt(), 7);
    QCOMPARE(accessible(window.edit)->textInterface()->text(0, 6), QString("Photos"));
    auto *link = new LinkLabel("late");
    window.centralWidget()->layout()->addWidget(link);
    link->show();
    QVERIFY(!canBeUsed(link));
    other.centralWidget()->layout()->addWidget(link);
    link->show();
    QVERIFY(canBeUsed(link));
    delete window.table;

    sheet->quit();
    QCoreApplication::processEvents();
    for (int i = 0; i < window.all.size(); ++i) {
        if (window.all.at(i) != window.table && window.all.at(i) != window.off)
            QCOMPARE(actionsOf(window.all.at(i)), before.at(i));
    }
    QVERIFY(canBeUsed(window.off));
    QVERIFY(accessible(window.menu)->child(0)->actionInterface());
}

void SheetAccessibleTest::comesBeforeEarlierPresses()
{
    Window window;
    QPushButton plain("Plain", window.centralWidget());
    plain.show();
    int clicks = 0;
    for (QPushButton *button : {&plain, static_cast<QPushButton *>(window.button)}) {
        connect(button, &QPushButton::clicked, &window, [&clicks] { ++clicks; });
        accessible(button)->actionInterface()->doAction("Press");
    }
    KovaMenu menu(window.centralWidget());
    connect(menu.addAction("Entry"), &QAction::triggered, &window, [&clicks] { ++clicks; });
    accessible(&menu)->child(0)->actionInterface()->doAction("Press");
    QVERIFY(plain.isDown());
    window.open("first");
    QTRY_VERIFY(!plain.isDown());
    QCOMPARE(clicks, 0);
}

void SheetAccessibleTest::coversSheetsBelow()
{
    Window window;
    KovaMessageSheet *below = window.open("below");
    KovaMessageSheet *above = window.open("above");
    QVERIFY(accessible(above)->state().modal);
    QVERIFY(!accessible(below)->state().modal);
    QVERIFY(canBeUsed(above->button(QMessageBox::Ok)));
    QVERIFY(!canBeUsed(below->button(QMessageBox::Ok)));
    delete above;
    QCoreApplication::processEvents();
    QVERIFY(accessible(below)->state().modal);
    QVERIFY(canBeUsed(below->button(QMessageBox::Ok)));
    QVERIFY(!canBeUsed(window.button));
    delete below;
    QCoreApplication::processEvents();
    QVERIFY(canBeUsed(window.button));
}

void SheetAccessibleTest::survivesDeletions()
{
    auto *window = new Window;
    // The interface is replaced while it does what opens the sheet.
    connect(window->check, &QCheckBox::toggled, window, [window] {
        KovaMessageSheet sheet(KovaMessageSheet::Question, "Show hidden files?", window);
        QTimer::singleShot(0, &sheet, [&sheet, window] {
            QVERIFY(!canBeUsed(window->check));
            sheet.quit();
        });
        sheet.exec();
    });
    accessible(window->check)->actionInterface()->doAction("Toggle");
    QCoreApplication::processEvents();
    QVERIFY(canBeUsed(window->check));

    // A page goes with the sheet that is on it, and then the window with another one.
    auto *page = new QWidget(window);
    auto *neighbour = new QPushButton("neighbour", page);
    auto *sheet = new KovaMessageSheet(KovaMessageSheet::Question, "on a page", page);
    page->show();
    sheet->showSheet();
    QVERIFY(!canBeUsed(neighbour));
    delete page;
    QCoreApplication::processEvents();
    QVERIFY(canBeUsed(window->button));
    window->open("last");
    QVERIFY(!canBeUsed(window->button));
    delete window;
    QCoreApplication::processEvents();
    Window next;
    QVERIFY(canBeUsed(next.button));
}

QTEST_MAIN(SheetAccessibleTest)

#include "sheet-accessible-test.moc"
