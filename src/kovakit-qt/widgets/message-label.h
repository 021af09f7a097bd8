// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QLabel>

/**
 * A label that fixes its height, whenever it is resized, at what its text needs in its new width.
 *
 * For the texts of sheets, whose width is given; use a KovaLabel where the label may also be higher
 * than its text. Switch word wrap on, which a new label has off, and call fitHeight() after a new
 * text.
 *
 * Assistive technology reads the words of the text; each link in it is a child that it can press.
 */
class KOVAKIT_EXPORT MessageLabel : public QLabel
{
    Q_OBJECT

public:
    /** An empty label; @p parent owns it. */
    explicit MessageLabel(QWidget *parent = nullptr);

    /**
     * Fixes the height, in device pixels, for the present text and width; a label that shows no
     * text keeps its height.
     */
    void fitHeight();

protected:
    /** Fixes the height for the new width. */
    void resizeEvent(QResizeEvent *event) override;
};
