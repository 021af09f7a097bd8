// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QCheckBox>

/**
 * A check box in the house look: its indicator is drawn by the style key
 * "component.checkbox".
 *
 * The host must have loaded its style files. Signals and states are those of QCheckBox.
 */
class KOVAKIT_EXPORT KovaCheckBox : public QCheckBox
{
    Q_OBJECT

public:
    /** A control that shows @p text; @p parent owns it. */
    explicit KovaCheckBox(const QString &text, QWidget *parent = nullptr);

protected:
    /** Draws the control, its indicator from all the pixels of the device. */
    void paintEvent(QPaintEvent *event) override;
};
