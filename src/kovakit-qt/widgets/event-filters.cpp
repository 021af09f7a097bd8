// SPDX-License-Identifier: MIT

#include "event-filters.h"

#include <QEvent>

MouseReleaseFilter::MouseReleaseFilter(QObject *parent)
    : QObject(parent)
{
}

bool MouseReleaseFilter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease)
        return true;
    return QObject::eventFilter(watched, event);
}

MouseButtonFilter::MouseButtonFilter(QObject *parent)
    : QObject(parent)
{
}

bool MouseButtonFilter::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}
