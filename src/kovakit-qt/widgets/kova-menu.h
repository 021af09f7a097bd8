// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QMenu>

/**
 * A menu that pulls itself back onto the screen when it opens partly beside it.
 *
 * A click that comes when the menu is closed already, because the program was busy, does nothing;
 * so the entries may be changed while one of them is at work.
 *
 * It has no style of its own; set the style text of "component.menu" for the house look.
 */
class KOVAKIT_EXPORT KovaMenu : public QMenu
{
    Q_OBJECT

public:
    /** An empty menu; @p parent owns it. */
    explicit KovaMenu(QWidget *parent = nullptr);

    /**
     * Where a menu of the geometry @p menu belongs on a screen whose work area is @p workArea, all
     * in device pixels.
     *
     * A menu that begins before the work area goes to 0, whatever the work area begins with; one
     * that reaches its last pixel or lies beyond ends before that pixel, even if it then begins
     * outside. Both directions are decided on their own.
     */
    [[nodiscard]] static QPoint positionOnScreen(const QRect &menu, const QRect &workArea);

protected:
    /** Moves the menu to where it belongs on the screen that it opens on, or the nearest one. */
    void showEvent(QShowEvent *event) override;
};
