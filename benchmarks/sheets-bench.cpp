#include "bench.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/component-strings.h>
#include <kovakit-qt/widgets/kova-msg-box.h>

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPushButton>

namespace {

QString messageText()
{
    return QStringLiteral("Do you want to remove the connection to this folder? The files on this "
                          "computer stay where they are.");
}

// Presses the accept button of every sheet and box as soon as it has been painted.
class Acceptor : public QObject
{
public:
    Acceptor() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            accept(watched);
        return false;
    }

private:
    static void accept(QObject *painted)
    {
        QAbstractButton *button = nullptr;
        if (auto *sheet = qobject_cast<KovaMessageSheet *>(painted))
            button = sheet->button(QMessageBox::Ok);
        else if (auto *box = qobject_cast<QMessageBox *>(painted))
            button = box->button(QMessageBox::Ok);
        if (button)
            QMetaObject::invokeMethod(button, &QAbstractButton::click, Qt::QueuedConnection);
    }
};

// An ordinary window of a program.
class HostWindow : public QWidget
{
public:
    HostWindow()
    {
        resize(800, 600);
        showAndWaitForPaint(this);
    }
};

double timeOfAccepted(const Stopwatch &watch, int result)
{
    const double time = watch.milliseconds();
    if (result != QMessageBox::Ok)
        qFatal("a sheet or box ended with %d before it was accepted", result);
    return time;
}

double openSheet(QWidget *window)
{
    const Stopwatch watch;
    const int result = showConfirmMsg(QString(), messageText(), window);
    return timeOfAccepted(watch, result);
}

double openBox(QWidget *window)
{
    const auto string = [](const char *key) {
        return ComponentStrings::getInstance()->getString(QString::fromLatin1(key));
    };
    const Stopwatch watch;
    QMessageBox box(window);
    box.setIconPixmap(getGlobalImage("icon_question", ImageManager::Default));
    box.setStandardButtons(QMessageBox::Ok | QMessageBox::Discard);
    box.button(QMessageBox::Ok)->setText(string("ok"));
    box.button(QMessageBox::Ok)->setStyleSheet(getStyleSheet("component.apply_button", false));
    box.button(QMessageBox::Discard)->setText(string("cancel"));
    box.button(QMessageBox::Discard)
        ->setStyleSheet(getStyleSheet("component.cancel_button", false));
    box.setStyleSheet(getStyleSheet("component.message_sheet_other", false));
    box.setText(DPIinfo::getInstance()->getScaledStyleSheet(
        QStringLiteral("<p style='line-height: 24px;'>%1</p>").arg(messageText())));
    box.findChild<QLabel *>(QStringLiteral("qt_msgbox_label"))
        ->setStyleSheet(getStyleSheet("component.message_sheet_text", false));
    const int result = box.exec();
    return timeOfAccepted(watch, result);
}

Bench::Side openOver(double (*open)(QWidget *))
{
    return [open] {
        const Acceptor acceptor;
        HostWindow window;
        return open(&window);
    };
}

// The time of one sheet after @p before others over the same window.
Bench::Side sheetAfter(int before)
{
    return [before] {
        const Acceptor acceptor;
        HostWindow window;
        for (int i = 0; i < before; ++i)
            openSheet(&window);
        return openSheet(&window);
    };
}

void sheets(Bench &bench)
{
    // Without a window manager a box has no advantage to lose.
    const double half = Bench::onX11() ? 0.5 : 0;
    bench.compare({"sheets/question", "ms", half}, openOver(openSheet), openOver(openBox));
    bench.compare({"sheets/hundredth-to-first", "ms", 1.2}, sheetAfter(99), sheetAfter(0));
}

const BenchTopic topic(sheets);

} // namespace
