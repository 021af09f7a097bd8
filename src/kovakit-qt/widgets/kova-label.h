// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QLabel>

/**
 * A label in the house look that grows with its text: the style key "component.label".
 *
 * With word wrap and the vertical size policy QSizePolicy::Minimum it asks at every resize for the
 * height that its text needs at the new width, none for a picture, and may be given more. Any other
 * label keeps its minimum height. For the texts of sheets there is MessageLabel, which is never
 * higher than its text.
 */
class KOVAKIT_EXPORT KovaLabel : public QLabel
{
    Q_OBJECT

public:
    /** An empty label; @p parent owns it. */
    explicit KovaLabel(QWidget *parent = nullptr, Qt::WindowFlags f = Qt::WindowFlags());

    /** A label that shows @p text; @p parent owns it. */
    explicit KovaLabel(const QString &text, QWidget *parent = nullptr,
                       Qt::WindowFlags f = Qt::WindowFlags());

protected:
    /** Sets the minimum height for the new width, where the label wraps and may grow. */
    void resizeEvent(QResizeEvent *event) override;
};
