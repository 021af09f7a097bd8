// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QRadioButton>

/**
 * A radio button in the house look: its indicator is drawn by the style key
 * "component.radio_button".
 *
 * The host must have loaded its style files. Signals and states are those of QRadioButton.
 */
class KOVAKIT_EXPORT KovaRadioButton : public QRadioButton
{
    Q_OBJECT

public:
    /** A control that shows @p text; @p parent owns it. */
    explicit KovaRadioButton(const QString &text, QWidget *parent = nullptr);

protected:
    /** Draws the control, its indicator from all the pixels of the device. */
    void paintEvent(QPaintEvent *event) override;
};
