#include "support/test-host.h"
#include "support/user-input.h"

#include <gallery-page.h>
#include <gallery-window.h>
#include <host-startup.h>
#include <page-registry.h>

#include <kovakit-qt/widgets/kova-msg-sheet.h>

#include <QListWidget>
#include <QMessageBox>
#include <QtTest>

// Drives the gallery's window from inside with keys and clicks that come as a person's do.
class GalleryWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { m_window.reset(); }
    void pagesFitTheWindowAndNameTheirPictures();
    void questionTellsItsAnswer();
    void jobsEndByThemselves();

private:
    void key(Qt::Key key) { press(m_window.get(), key); }
    void focusButton(const QString &text);

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

// Walks with Tab, as someone without a mouse has to.
void GalleryWindowTest::focusButton(const QString &text)
{
    const auto focused = [this] {
        return qobject_cast<QAbstractButton *>(m_window->focusWidget());
    };
    for (int step = 0; step < 100; ++step) {
        if (focused() && focused()->text() == text)
            return;
        key(Qt::Key_Tab);
    }
    QFAIL(qPrintable(text + " cannot be reached with Tab"));
}

// The picture of a page is one of the window: what has to be scrolled to would be missing.
void GalleryWindowTest::pagesFitTheWindowAndNameTheirPictures()
{
    int pictures = 0;
    for (std::size_t index = 0; index < pageRegistry().size(); ++index) {
        const GalleryPage *page = m_window->showPage(int(index));
        const QByteArray name = pageRegistry()[index].name.toLocal8Bit();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
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

void GalleryWindowTest::questionTellsItsAnswer()
{
    auto *list = m_window->findChild<QListWidget *>();
    QCOMPARE(m_window->focusWidget(), list);
    while (list->currentItem()->text() != "Message sheets"
           && list->currentRow() + 1 < list->count())
        key(Qt::Key_Down);
    focusButton("Question");
    QWidget *button = m_window->focusWidget();
    for (const bool refused : {true, false}) {
        QTimer::singleShot(20, this, [&] {
            const KovaMessageSheet *sheet = visibleSheet(m_window.get());
            if (!sheet)
                qFatal("the question did not open");
            QVERIFY2(sheet->button(QMessageBox::Ok)->icon().isNull(), "a desktop's icon");
            key(refused ? Qt::Key_Escape : Qt::Key_Return);
        });
        key(Qt::Key_Space);
        QVERIFY(!visibleSheet(m_window.get()));
        const QString report = m_window->reportText();
        QVERIFY2(report.contains(refused ? "8388608" : "1024"), qPrintable(report));
        QVERIFY2(report.contains(refused ? "second button" : "accept button"), qPrintable(report));
        QCOMPARE(m_window->focusWidget(), button);
    }
}

void GalleryWindowTest::jobsEndByThemselves()
{
    for (const char *button : {"Processing", "Animation"}) {
        init();
        m_window->showPageNamed("sheets");
        focusButton(button);
        const QString before = m_window->reportText();
        key(Qt::Key_Space);
        QVERIFY(!visibleSheet(m_window.get()));
        QVERIFY(m_window->reportText() != before);
        QVERIFY2(m_window->reportText().contains(" 0:"), qPrintable(m_window->reportText()));
    }
}

QTEST_MAIN(GalleryWindowTest)
#include "gallery-window-test.moc"
