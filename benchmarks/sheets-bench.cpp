// SPDX-License-Identifier: MIT

#include "bench.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/component-strings.h>
#include <kovakit-qt/widgets/kova-mask.h>
#include <kovakit-qt/widgets/kova-msg-box.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>

namespace {

// Presses the accept button of every sheet and box as soon as a person could: when it is painted
// and in the active window.
class Acceptor : public QObject
{
public:
    Acceptor() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            if (auto *sheet = qobject_cast<KovaMessageSheet *>(watched))
                m_button = sheet->button(QMessageBox::Ok);
            else if (auto *box = qobject_cast<QMessageBox *>(watched))
                m_button = box->button(QMessageBox::Ok);
        }
        if (m_button && m_button->isActiveWindow()) {
            QMetaObject::invokeMethod(m_button, &QAbstractButton::click, Qt::QueuedConnection);
            m_button = nullptr;
        }
        return false;
    }

private:
    QPointer<QAbstractButton> m_button;
};

// An ordinary window of a program: all that belongs to its opening is over, and it has been painted
// before, so that Qt has all the buffers that it paints a window with.
class HostWindow : public QWidget
{
public:
    HostWindow()
    {
        resize(800, 600);
        showAndWaitForPaint(this);
        QElapsedTimer sinceShown;
        sinceShown.start();
        while (!isActiveWindow() || !sinceShown.hasExpired(50))
            QCoreApplication::processEvents();
        for (int i = 0; i < 3; ++i) {
            update();
            QCoreApplication::processEvents();
        }
    }
};

QString messageText()
{
    return QStringLiteral("Do you want to remove the connection to this folder? The files on this "
                          "computer stay where they are.");
}

void checkAccepted(int result)
{
    if (result != QMessageBox::Ok)
        qFatal("a sheet or box ended with %d before it was accepted", result);
}

void openSheet(QWidget *window)
{
    checkAccepted(showConfirmMsg(QString(), messageText(), window));
}

// A sheet that leaves the window's close button alone, and so opens no display connections.
void openUnblockedSheet(QWidget *window)
{
    KovaMessageSheet sheet(KovaMessageSheet::Question, messageText(), window);
    sheet.setBlockWindowButton(false);
    KovaMask::createMask(&sheet, window, KovaMask::dimColor);
    checkAccepted(sheet.exec());
}

// A box that looks like the sheet: its style texts, with the selectors made to meet a box.
void openBox(QWidget *window)
{
    const auto string = [](const char *key) {
        return ComponentStrings::getInstance()->getString(QString::fromLatin1(key));
    };
    QMessageBox box(window);
    box.setStyleSheet(getStyleSheet("component.message_sheet_other", false)
                          .replace(QLatin1String("KovaSheet"), QLatin1String("QMessageBox")));
    box.setIconPixmap(getGlobalImage("icon_question", ImageManager::Default));
    box.setStandardButtons(QMessageBox::Ok | QMessageBox::Discard);
    box.button(QMessageBox::Ok)->setText(string("ok"));
    box.button(QMessageBox::Ok)->setStyleSheet(getStyleSheet("component.apply_button", false));
    box.button(QMessageBox::Discard)->setText(string("cancel"));
    box.button(QMessageBox::Discard)
        ->setStyleSheet(getStyleSheet("component.cancel_button", false));
    box.findChild<QLabel *>(QStringLiteral("qt_msgbox_label"))
        ->setStyleSheet(getStyleSheet("component.message_sheet_text", false));
    box.setText(DPIinfo::getInstance()->getScaledStyleSheet(
        QStringLiteral("<p style='line-height: 24px;'>%1</p>").arg(messageText())));
    checkAccepted(box.exec());
}

// The time of one sheet or box after @p before others over the same window, until the window is
// painted without it.
Bench::Side openOver(void (*open)(QWidget *), int before = 0)
{
    return [open, before] {
        const Acceptor acceptor;
        HostWindow window;
        for (int i = 0; i < before; ++i) {
            open(&window);
            QCoreApplication::processEvents();
        }
        const Stopwatch watch;
        open(&window);
        QCoreApplication::processEvents();
        return watch.milliseconds();
    };
}

void sheets(Bench &bench)
{
    // Offscreen a box needs neither a window of the X server nor a window manager.
    const double half = Bench::onX11() ? 0.5 : 0;
    bench.compare({"sheets/question", "ms", half}, openOver(openSheet), openOver(openBox));
    bench.compare({"sheets/question-unblocked", "ms", 0}, openOver(openUnblockedSheet),
                  openOver(openBox));
    bench.compare({"sheets/hundredth-to-first", "ms", 1.2}, openOver(openSheet, 99),
                  openOver(openSheet));
}

const BenchTopic topic(sheets);

} // namespace
