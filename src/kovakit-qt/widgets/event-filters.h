// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QObject>

/**
 * Keeps releases of the mouse buttons from the objects that it is installed on.
 *
 * For a view in a combo box's popup: the popup takes a release there for a choice and closes.
 */
class KOVAKIT_EXPORT MouseReleaseFilter : public QObject
{
    Q_OBJECT

public:
    /** A filter that @p parent owns. Install it with QObject::installEventFilter(). */
    explicit MouseReleaseFilter(QObject *parent = nullptr);

protected:
    /** Swallows QEvent::MouseButtonRelease and nothing else. */
    bool eventFilter(QObject *watched, QEvent *event) override;
};

/**
 * Keeps presses, releases and double clicks of the mouse buttons from the objects that it is
 * installed on.
 *
 * For a bar whose buttons shall work while clicks beside them do nothing: the filter does not
 * cover the children of the object.
 */
class KOVAKIT_EXPORT MouseButtonFilter : public QObject
{
    Q_OBJECT

public:
    /** A filter that @p parent owns. Install it with QObject::installEventFilter(). */
    explicit MouseButtonFilter(QObject *parent = nullptr);

protected:
    /** Swallows presses, releases and double clicks; movement and the wheel pass. */
    bool eventFilter(QObject *watched, QEvent *event) override;
};
