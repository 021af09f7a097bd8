// SPDX-License-Identifier: MIT

#include "screenshots.h"

#include "gallery-page.h"
#include "gallery-window.h"
#include "page-registry.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/kova-sheet.h>

#include <QApplication>
#include <QColor>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLabel>
#include <QMovie>
#include <QPainter>
#include <QPixmap>
#include <QTimer>
#include <QWidgetList>

#include <functional>
#include <memory>
#include <vector>

namespace {

constexpr int turnMilliseconds = 15;
// Not the very corner: without a display, the pointer rests there.
constexpr QPoint cornerOfScreen(40, 40);
constexpr int patienceMilliseconds = 15000;

// Lets what was just shown lay itself out and be activated.
void letEventsPass()
{
    QEventLoop loop;
    QTimer::singleShot(turnMilliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

void stopMovies(QWidget *window)
{
    for (const QLabel *label : window->findChildren<QLabel *>()) {
        if (QMovie *movie = label->movie()) {
            movie->setPaused(true);
            movie->jumpToFrame(0);
        }
    }
}

// A window manager's title bar is not in the picture of a window, but part of what people see.
void drawTitleBar(QPainter &painter, const QRect &window, const QString &title)
{
    const QRect bar(window.left(), window.top() - kovaPx(30), window.width(), kovaPx(30));
    painter.fillRect(bar, QColor(0xE3, 0xE9, 0xEF));
    painter.setPen(QColor(0x22, 0x30, 0x3C));
    painter.drawText(bar, Qt::AlignCenter, title);
    painter.setPen(QColor(0x7D, 0x8E, 0x9E));
    painter.drawRect(window.united(bar).adjusted(-1, -1, 0, 0));
}

QPixmap pictureOf(GalleryWindow *window)
{
    stopMovies(window);
    QPixmap picture = window->grab();
    QPainter painter(&picture);
    for (QWidget *other : QApplication::topLevelWidgets()) {
        if (other == window || !other->isVisible())
            continue;
        // Without the frames that a window manager draws.
        QRect place(other->geometry().topLeft() - window->geometry().topLeft(), other->size());
        const bool dialog = qobject_cast<QDialog *>(other);
        if (dialog)
            place.moveCenter(window->rect().center());
        painter.drawPixmap(place.topLeft(), other->grab());
        if (dialog)
            drawTitleBar(painter, place, other->windowTitle());
    }
    return picture;
}

// Closes the topmost of what is open over the window. Returns whether there was something.
bool closeTopmost(GalleryWindow *window)
{
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup->close();
    if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
        dialog->reject();
        return true;
    }
    for (KovaSheet *sheet : window->findChildren<KovaSheet *>()) {
        if (sheet->isVisible())
            return QMetaObject::invokeMethod(sheet, "quit");
    }
    return false;
}

class Photographer
{
public:
    Photographer(GalleryWindow *window, const QString &folder)
        : m_window(window)
        , m_folder(folder)
    {
    }

    QString takeAll(const QString &pageName)
    {
        const std::vector<PageEntry> &pages = pageRegistry();
        for (std::size_t index = 0; index < pages.size(); ++index) {
            if (pageName.isEmpty() || pageName == pages[index].name)
                takePage(pages[index].name, m_window->showPage(int(index)));
        }
        return m_error;
    }

private:
    void takePage(const QString &name, const GalleryPage *page)
    {
        letEventsPass();
        await(name, [page] { return page->isReady(); });
        take(name);
        for (const Scene &scene : page->scenes()) {
            if (m_error.isEmpty())
                stage(name + QLatin1Char('-') + scene.name, scene);
        }
    }

    // Opening may block in a loop of its own, in which the picture is taken and the end is made. A
    // timer does that, not a queued call: what is posted stays undelivered in a loop inside one.
    void stage(const QString &name, const Scene &scene)
    {
        m_window->clearReport();
        if (scene.opener)
            m_window->move(cornerOfScreen - scene.opener->mapTo(m_window, QPoint()));
        bool open = true;
        QEventLoop finished;
        QTimer::singleShot(turnMilliseconds, m_window, [&] {
            letEventsPass();
            await(name, scene.ready);
            take(name);
            QElapsedTimer clock;
            clock.start();
            while (closeTopmost(m_window) && clock.elapsed() < patienceMilliseconds)
                letEventsPass();
            finished.quit();
            open = false;
        });
        scene.open();
        if (open)
            finished.exec();
        letEventsPass();
    }

    void await(const QString &name, const std::function<bool()> &ready)
    {
        QElapsedTimer clock;
        clock.start();
        while (ready && !ready()) {
            if (clock.elapsed() > patienceMilliseconds) {
                m_error = QStringLiteral("\"%1\" does not get ready for its picture.").arg(name);
                return;
            }
            letEventsPass();
        }
    }

    void take(const QString &name)
    {
        const QString path = m_folder + QLatin1Char('/') + name + QLatin1String(".png");
        if (m_error.isEmpty() && !pictureOf(m_window).save(path))
            m_error = QStringLiteral("Cannot write \"%1\".").arg(path);
    }

    GalleryWindow *m_window;
    QString m_folder;
    QString m_error;
};

} // namespace

QString takeScreenshots(GalleryWindow *window, const QString &folder, const QString &pageName)
{
    if (!QDir().mkpath(folder))
        return QStringLiteral("Cannot make the folder \"%1\".").arg(folder);
    // Nothing in a picture may depend on the moment at which it is taken.
    QApplication::setCursorFlashTime(0);
    window->setFixedSize(GalleryWindow::designSize());
    window->show();
    window->activateWindow();
    letEventsPass();
    return Photographer(window, folder).takeAll(pageName);
}
