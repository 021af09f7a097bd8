// SPDX-License-Identifier: MIT

#include "support/answers.h"
#include "support/test-host.h"
#include "support/user-input.h"

#include <environment.h>
#include <gallery-page.h>
#include <gallery-window.h>
#include <host-startup.h>
#include <options.h>
#include <page-registry.h>
#include <words.h>

#include <kovakit-qt/kovakit-qt.h>

#include <QtTest>
#include <QtWidgets>

// Drives the gallery's window from inside with keys and clicks that come as a person's do.
class GalleryWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { m_window.reset(); }
    void pagesFitTheWindowAndNameTheirPictures_data();
    void pagesFitTheWindowAndNameTheirPictures();
    void focusShowsAtEveryStop_data();
    void focusShowsAtEveryStop();
    void noTextStaysUntranslated();
    void everyScrollBarIsTheHouses();
    void viewsGrowWithTheWindow();
    void assistiveTechnologySelectsAndTicks();
    void optionsHaveLimitsAndMakeInstances();
    void questionTellsItsAnswer();
    void jobsEndByThemselves();
    void selectionFollowsTheEntry();
    void foldersTakeTicksAndMenus();

private:
    void key(Qt::Key key) { press(m_window.get(), key); }
    GalleryPage *showPage(std::size_t index);
    bool focusButton(const QString &text);

    std::unique_ptr<GalleryWindow> m_window;
};

void GalleryWindowTest::initTestCase()
{
    HostSettings settings;
    settings.themeFolder = themeFolder();
    settings.userDataFolder = scratchFolder();
    settings.language = "enu";
    settings.styleFiles = QStringList{":/gallery/gallery.qss"};
    QCOMPARE(startUpHost(settings), QString());
}

void GalleryWindowTest::init()
{
    m_window = std::make_unique<GalleryWindow>("enu");
    m_window->resize(GalleryWindow::designSize());
    showActive(m_window.get());
}

// Shows a page and lets it find its place.
GalleryPage *GalleryWindowTest::showPage(std::size_t index)
{
    GalleryPage *page = m_window->showPage(int(index));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    return page;
}

// Walks with Tab, as someone without a mouse has to.
bool GalleryWindowTest::focusButton(const QString &text)
{
    const auto focused = [this] {
        return qobject_cast<QAbstractButton *>(m_window->focusWidget());
    };
    for (int step = 0; step < 100; ++step) {
        if (focused() && focused()->text() == text)
            return true;
        key(Qt::Key_Tab);
    }
    return false;
}

void GalleryWindowTest::pagesFitTheWindowAndNameTheirPictures_data()
{
    QTest::addColumn<QString>("language");
    for (const char *language : {"enu", "chs", "deu", "fra", "jpn"})
        QTest::newRow(language) << language;
}

// The picture of a page is one of the window: what has to be scrolled to would be missing.
void GalleryWindowTest::pagesFitTheWindowAndNameTheirPictures()
{
    QFETCH(QString, language);
    GalleryWords words(language);
    QCoreApplication::installTranslator(&words);
    init();
    const auto *list = m_window->findChild<QListWidget *>();
    QVERIFY2(list->sizeHintForColumn(0) <= list->viewport()->width(), "the list cuts a title");
    int pictures = 0;
    for (std::size_t index = 0; index < pageRegistry().size(); ++index) {
        const GalleryPage *page = showPage(index);
        const QByteArray name = pageRegistry()[index].name.toLocal8Bit();
        const QSize room = page->parentWidget()->size();
        QVERIFY2(page->height() <= room.height() && page->width() <= room.width(),
                 name.constData());

        for (QAbstractButton *button : page->findChildren<QAbstractButton *>()) {
            if (!button->text().isEmpty() || button->icon().isNull() || !button->isVisible())
                continue;
            // The arrows between the folders of a path do nothing.
            if (QAccessible::queryAccessibleInterface(button)->role() == QAccessible::Separator)
                continue;
            ++pictures;
            QVERIFY2(!button->accessibleName().isEmpty(), name.constData());
            QVERIFY2(button->focusPolicy() == Qt::NoFocus || !button->toolTip().isEmpty(),
                     qPrintable(button->accessibleName()));
        }
    }
    QVERIFY(pictures > 0);
}

void GalleryWindowTest::focusShowsAtEveryStop_data()
{
    QTest::addColumn<QString>("page");
    for (const PageEntry &entry : pageRegistry())
        QTest::newRow(qPrintable(entry.name)) << entry.name;
}

// Whatever the focus leaves looks different afterwards.
void GalleryWindowTest::focusShowsAtEveryStop()
{
    QFETCH(QString, page);
    m_window->showPageNamed(page);
    QSet<const QWidget *> stops;
    for (const QWidget *focus = m_window->focusWidget(); !stops.contains(focus);
         focus = m_window->focusWidget()) {
        stops.insert(focus);
        const QRect place(focus->mapTo(m_window.get(), QPoint()), focus->size());
        const QImage with = m_window->grab(place).toImage();
        key(Qt::Key_Tab);
        const QImage without = m_window->grab(place).toImage();
        QVERIFY2(with != without,
                 qPrintable(focus->accessibleName() + " of " + focus->metaObject()->className()));
    }
    QVERIFY(stops.size() > 1);
}

void GalleryWindowTest::noTextStaysUntranslated()
{
    class Marker : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *, const char *text, const char *, int) const override
        {
            return QChar(0x2045) + QString(text) + QChar(0x2046);
        }
    } marker;
    QCoreApplication::installTranslator(&marker);
    init();
    // Two words, one after the other, make a sentence; names of things and codes are one word.
    static const QRegularExpression sentence("[A-Za-z]{2,} [A-Za-z]{2,}");
    const QList<QString> ofTheLibrary = stringsOfLanguage("enu").values();
    for (std::size_t index = 0; index < pageRegistry().size(); ++index) {
        showPage(index);
        QVERIFY(m_window->windowTitle().contains(QChar(0x2045)));
        QStringList texts;
        for (const QLabel *label : m_window->findChildren<QLabel *>())
            texts.append(label->text());
        for (const QAbstractButton *button : m_window->findChildren<QAbstractButton *>())
            texts << button->text() << button->toolTip();
        for (const QWidget *widget : m_window->findChildren<QWidget *>())
            texts.append(widget->accessibleName());
        for (const QString &text : qAsConst(texts)) {
            QVERIFY2(text.contains(QChar(0x2045)) || !text.contains(sentence)
                         || ofTheLibrary.contains(text) || text.contains("R&amp;D"),
                     qPrintable(text));
        }
    }
}

void GalleryWindowTest::everyScrollBarIsTheHouses()
{
    m_window->resize(m_window->minimumSize());
    int shown = 0;
    for (std::size_t index = 0; index < pageRegistry().size(); ++index) {
        showPage(index);
        for (const QScrollBar *bar : m_window->findChildren<QScrollBar *>()) {
            if (!bar->isVisible())
                continue;
            ++shown;
            const bool upright = bar->orientation() == Qt::Vertical;
            QCOMPARE(upright ? bar->width() : bar->height(), kovaPx(12));
        }
    }
    QVERIFY(shown > 20);

    // Nothing is painted where two of them meet.
    const QWidget *area = showPage(0)->parentWidget()->parentWidget();
    const QPoint end = area->mapTo(m_window.get(), area->rect().bottomRight());
    const QImage picture = m_window->grab().toImage();
    for (int step = 0; step < kovaPx(11); ++step)
        QCOMPARE(picture.pixelColor(end - QPoint(step, step)), QColor(Qt::white));
}

void GalleryWindowTest::viewsGrowWithTheWindow()
{
    for (const char *page : {"log", "long-table", "tree"}) {
        m_window->showPageNamed(page);
        const QWidget *shown = m_window->findChild<QStackedWidget *>()->currentWidget();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        const auto height = [shown] {
            int highest = 0;
            for (const QAbstractItemView *view : shown->findChildren<QAbstractItemView *>())
                highest = qMax(highest, view->height());
            return highest;
        };
        const int before = height();
        m_window->resize(m_window->width(), m_window->height() + 100);
        QTRY_VERIFY2(height() == before + 100, page);
    }
}

void GalleryWindowTest::assistiveTechnologySelectsAndTicks()
{
    const auto act = [](QAccessibleInterface *thing) {
        thing->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    };
    auto *list = m_window->findChild<QListWidget *>();
    QAccessibleInterface *pages = QAccessible::queryAccessibleInterface(list);
    for (const int row : {2, 7}) {
        act(pages->child(row));
        QCOMPARE(list->currentRow(), row);
        QVERIFY(m_window->windowTitle().startsWith(pageRegistry()[std::size_t(row)].title));
    }
    act(pages->child(7)); // which takes the selection away
    QTRY_VERIFY2(list->item(7)->isSelected(), "the list shows no page as chosen");

    m_window->showPageNamed("checks");
    for (const auto &[text, report] :
         {std::pair("Downloads", "3 of 3 folders are backed up."),
          std::pair("Everything in my home folder", "0 of 3 folders are backed up."),
          std::pair("Pictures", "1 of 3 folders are backed up."),
          std::pair("On Sundays", "Chosen: On Sundays.")}) {
        for (QAbstractButton *button : m_window->findChildren<QAbstractButton *>()) {
            if (button->text() == text && button->isEnabled())
                act(QAccessible::queryAccessibleInterface(button));
        }
        QCOMPARE(m_window->reportText(), report);
    }
}

void GalleryWindowTest::optionsHaveLimitsAndMakeInstances()
{
    GalleryOptions options;
    QSet<QString> names = {instanceName(options)};
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY"}) {
        const QByteArray before = qgetenv(variable);
        qputenv(variable, "other-7");
        names.insert(instanceName(options));
        qputenv(variable, before);
    }
    for (const char *scale : {"0.5", "4"})
        QCOMPARE(parseOptions({"kovakit-gallery", "--scale", scale}, &options), QString());
    for (const char *scale : {"0.49", "4.01"})
        QVERIFY2(!parseOptions({"kovakit-gallery", "--scale", scale}, &options).isEmpty(), scale);
    options = GalleryOptions();
    QCOMPARE(parseOptions({"kovakit-gallery", "-reverse"}, &options), QString());
    names.insert(instanceName(options));
    QCOMPARE(names.size(), 4);
}

void GalleryWindowTest::questionTellsItsAnswer()
{
    auto *list = m_window->findChild<QListWidget *>();
    QCOMPARE(m_window->focusWidget(), list);
    while (list->currentItem()->text() != "Message sheets"
           && list->currentRow() + 1 < list->count())
        key(Qt::Key_Down);
    QVERIFY(focusButton("Question"));
    QWidget *button = m_window->focusWidget();
    for (const int answer : {refused, accepted}) {
        QTimer::singleShot(20, this, [&] {
            const KovaMessageSheet *sheet = visibleSheet(m_window.get());
            if (!sheet)
                qFatal("the question did not open");
            QVERIFY2(sheet->button(QMessageBox::Ok)->icon().isNull(), "a desktop's icon");
            key(answer == refused ? Qt::Key_Escape : Qt::Key_Return);
        });
        key(Qt::Key_Space);
        QVERIFY(!visibleSheet(m_window.get()));
        const QString report = m_window->reportText();
        QVERIFY2(report.contains(QString::number(answer)), qPrintable(report));
        QVERIFY2(report.contains(answer == refused ? "second button" : "accept button"),
                 qPrintable(report));
        QCOMPARE(m_window->focusWidget(), button);
    }
}

void GalleryWindowTest::jobsEndByThemselves()
{
    for (const char *button : {"Processing", "Animation"}) {
        init();
        m_window->showPageNamed("sheets");
        QVERIFY2(focusButton(button), button);
        const QString before = m_window->reportText();
        key(Qt::Key_Space);
        QVERIFY(!visibleSheet(m_window.get()));
        QVERIFY(m_window->reportText() != before);
        QVERIFY2(m_window->reportText().contains(" 0:"), qPrintable(m_window->reportText()));
    }
}

void GalleryWindowTest::selectionFollowsTheEntry()
{
    for (const char *page : {"log", "long-table"}) {
        init();
        m_window->showPageNamed(page);
        auto *view = m_window->findChild<KovaTableWidget *>();
        QTableWidget *table = view->getTable();
        const auto linesOf = [](const QModelIndexList &rows) {
            QStringList lines;
            for (const QModelIndex &row : rows)
                lines.append(row.data().toString() + row.siblingAtColumn(3).data().toString());
            return lines;
        };
        const auto selected = [&] { return linesOf(table->selectionModel()->selectedRows()); };
        const auto second = [&] { return linesOf({table->model()->index(1, 0)}); };
        table->setFocus();
        key(Qt::Key_Down);
        const QStringList before = second();
        QCOMPARE(selected(), before);
        // Of the log's entries one that is sorted to another page is not to be seen.
        for (const bool back : {false, true}) {
            click(view->getHeader()->viewport(), {kovaPx(40), kovaPx(15)});
            QCOMPARE(second() == before, back);
            QCOMPARE(selected(), back || table->rowCount() >= 100 ? before : QStringList());
        }
        QCOMPARE(table->currentRow(), 1);
    }
}

void GalleryWindowTest::foldersTakeTicksAndMenus()
{
    m_window->showPageNamed("tree");
    auto *tree = m_window->findChild<KovaTreeWidget *>();
    QTreeWidgetItem *folder = tree->topLevelItem(1);
    tree->setFocus();
    tree->setCurrentItem(folder);
    for (const auto state : {Qt::Checked, Qt::Unchecked}) {
        folder->setCheckState(0, state);
        tree->setCurrentItem(folder);
        key(Qt::Key_Insert);
        key(Qt::Key_Return);
        QCOMPARE(folder->child(folder->childCount() - 1)->checkState(0), state);
        QCOMPARE(folder->checkState(0), state);
    }
    tree->setCurrentItem(folder);
    for (const auto &[menuKey, modifier] :
         {std::pair(Qt::Key_Menu, Qt::NoModifier), std::pair(Qt::Key_F10, Qt::ShiftModifier)}) {
        press(m_window.get(), menuKey, modifier);
        QWidget *menu = QApplication::activePopupWidget();
        QVERIFY(menu);
        const QPoint place = tree->viewport()->mapFromGlobal(menu->pos());
        const QRect row = tree->visualItemRect(folder);
        QVERIFY(QRect(row.left(), row.bottom() - 2, kovaPx(60), 5).contains(place));
        menu->close();
    }
}

QTEST_MAIN(GalleryWindowTest)
#include "gallery-window-test.moc"
