// SPDX-License-Identifier: MIT

#include "input-guards_p.h"

#include <QEvent>
#include <QWidget>

namespace {

class WheelGuard : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Wheel || static_cast<QWidget *>(watched)->hasFocus())
            return false;
        event->ignore();
        return true;
    }
};

class ClickGuard : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
            return !static_cast<QWidget *>(watched)->isVisible();
        default:
            return false;
        }
    }
};

} // namespace

void passWheelWithoutFocus(QWidget *field)
{
    static WheelGuard guard;
    field->setFocusPolicy(Qt::StrongFocus);
    field->installEventFilter(&guard);
}

void dropLateClicks(QWidget *popup)
{
    static ClickGuard guard;
    popup->installEventFilter(&guard);
}
