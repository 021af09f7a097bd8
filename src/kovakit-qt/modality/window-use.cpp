// SPDX-License-Identifier: MIT

#include "window-use_p.h"

WindowUse useOf(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::Gesture:
    case QEvent::NativeGesture:
    case QEvent::ToolTip:
        return WindowUse::Pointer;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
        return WindowUse::Typing;
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return WindowUse::Drag;
    default:
        return WindowUse::None;
    }
}
