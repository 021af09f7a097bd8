#include "support/test-host.h"

#include <gallery-page.h>
#include <gallery-window.h>
#include <host-startup.h>
#include <page-registry.h>

#include <kovakit-qt/widgets/kova-msg-sheet.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QListWidget>
#include <QMessageBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QtTest>

#include <memory>

// Drives the gallery's window from inside with keys and clicks that come as a person's do.
class GalleryWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void pagesFitTheWindow();
    void picturesToPressHaveNames();
    void questionTellsItsAnswer_data();
    void questionTellsItsAnswer();
    void jobsEndByThemselves_data();
    void jobsEndByThemselves();
    void boxOfItsOwnTellsItsAnswer();

private:
    void press(Qt::Key key) { QTest::keyClick(m_window->windowHandle(), key); }
    void focusButton(const QString &text);
    KovaMessageSheet *visibleSheet() const;

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
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void GalleryWindowTest::cleanup()
{
    m_window.reset();
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
        press(Qt::Key_Tab);
    }
    QFAIL(qPrintable(text + " cannot be reached with Tab"));
}

KovaMessageSheet *GalleryWindowTest::visibleSheet() const
{
    for (auto *sheet : m_window->findChildren<KovaMessageSheet *>()) {
        if (sheet->isVisible())
            return sheet;
    }
    return nullptr;
}

// The picture of a page is one of the window: what has to be scrolled to would be missing.
void GalleryWindowTest::pagesFitTheWindow()
{
    for (std::size_t index = 0; index < pageRegistry().size(); ++index) {
        const GalleryPage *page = m_window->showPage(int(index));
        QVERIFY(page);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        const QWidget *viewport = page->parentWidget();
        const QByteArray name = pageRegistry()[index].name.toLocal8Bit();
        QVERIFY2(page->height() <= viewport->height(), name.constData());
        QVERIFY2(page->width() <= viewport->width(), name.constData());
    }
}

void GalleryWindowTest::picturesToPressHaveNames()
{
    int pictures = 0;
    for (std::size_t index = 0; index < pageRegistry().size(); ++index) {
        const GalleryPage *page = m_window->showPage(int(index));
        for (QAbstractButton *button : page->findChildren<QAbstractButton *>()) {
            if (!button->text().isEmpty() || button->icon().isNull() || !button->isVisible())
                continue;
            // The arrows between the folders of a path do nothing.
            QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(button);
            if (interface->role() == QAccessible::Separator)
                continue;
            ++pictures;
            QVERIFY2(!button->accessibleName().isEmpty(), qPrintable(pageRegistry()[index].name));
            QVERIFY2(button->focusPolicy() == Qt::NoFocus || !button->toolTip().isEmpty(),
                     qPrintable(button->accessibleName()));
        }
    }
    QVERIFY(pictures > 0);
}

void GalleryWindowTest::questionTellsItsAnswer_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("words");
    QTest::newRow("Escape") << Qt::Key_Escape << "8388608"
                            << "second button";
    QTest::newRow("Return") << Qt::Key_Return << "1024"
                            << "accept button";
}

void GalleryWindowTest::questionTellsItsAnswer()
{
    QFETCH(Qt::Key, key);
    QFETCH(QString, number);
    QFETCH(QString, words);

    auto *list = m_window->findChild<QListWidget *>();
    QCOMPARE(m_window->focusWidget(), list);
    while (list->currentItem()->text() != "Message sheets"
           && list->currentRow() + 1 < list->count())
        press(Qt::Key_Down);
    focusButton("Question");
    QWidget *button = m_window->focusWidget();
    QVERIFY(button);

    bool iconFree = false;
    QTimer::singleShot(20, this, [&] {
        const KovaMessageSheet *sheet = visibleSheet();
        if (!sheet)
            qFatal("the question did not open");
        iconFree = sheet->button(QMessageBox::Ok)->icon().isNull()
                && sheet->button(QMessageBox::Discard)->icon().isNull();
        press(key);
    });
    press(Qt::Key_Space);
    QVERIFY(!visibleSheet());
    QVERIFY2(m_window->reportText().contains(number), qPrintable(m_window->reportText()));
    QVERIFY2(m_window->reportText().contains(words), qPrintable(m_window->reportText()));
    QCOMPARE(m_window->focusWidget(), button);
    QVERIFY2(iconFree, "the desktop's icons are on the buttons");
}

void GalleryWindowTest::jobsEndByThemselves_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("processing") << "Processing";
    QTest::newRow("animation") << "Animation";
}

void GalleryWindowTest::jobsEndByThemselves()
{
    QFETCH(QString, button);
    m_window->showPageNamed("sheets");
    focusButton(button);
    const QString before = m_window->reportText();
    press(Qt::Key_Space);
    QVERIFY(!visibleSheet());
    QVERIFY(m_window->reportText() != before);
    QVERIFY2(m_window->reportText().contains(" 0:"), qPrintable(m_window->reportText()));
}

void GalleryWindowTest::boxOfItsOwnTellsItsAnswer()
{
    m_window->showPageNamed("message-boxes");
    QAbstractButton *confirm = nullptr;
    for (auto *button : m_window->findChildren<QAbstractButton *>()) {
        if (button->text() == "On its own" && button->accessibleDescription() == "showConfirmMsg")
            confirm = button;
    }
    QVERIFY(confirm);
    QTimer::singleShot(20, this, [] {
        QWidget *box = QApplication::activeModalWidget();
        if (!box || !QTest::qWaitForWindowActive(box))
            qFatal("the message box did not open");
        QTest::keyClick(box->windowHandle(), Qt::Key_Escape);
    });
    QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      confirm->mapTo(m_window.get(), confirm->rect().center()));
    QVERIFY2(m_window->reportText().contains("4194304"), qPrintable(m_window->reportText()));
}

QTEST_MAIN(GalleryWindowTest)
#include "gallery-window-test.moc"
