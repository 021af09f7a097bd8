// SPDX-License-Identifier: MIT

#include "kova-radio-button.h"

#include "kovakit-qt/style/crisp-icons_p.h"

#include <kovakit-qt/style/style-manager.h>

#include <QStyleOptionButton>
#include <QStylePainter>

KovaRadioButton::KovaRadioButton(const QString &text, QWidget *parent)
    : QRadioButton(text, parent)
{
    setStyleSheet(getStyleSheet("component.radio_button", false));
}

void KovaRadioButton::paintEvent(QPaintEvent *)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    option.icon = CrispIcons::unchanged(option.icon, option.iconSize);
    QStylePainter painter(this);
    const CrispIcons crisp;
    painter.drawControl(QStyle::CE_RadioButton, option);
}
