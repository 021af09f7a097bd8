// SPDX-License-Identifier: MIT

#include "kova-check-box.h"

#include "kovakit-qt/style/crisp-icons_p.h"

#include <kovakit-qt/style/style-manager.h>

#include <QIcon>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStylePainter>

KovaCheckBox::KovaCheckBox(const QString &text, QWidget *parent)
    : QCheckBox(text, parent)
{
    setStyleSheet(getStyleSheet("component.checkbox", false));
}

void KovaCheckBox::paintEvent(QPaintEvent *)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    option.icon = CrispIcons::unchanged(option.icon, option.iconSize);
    QStylePainter painter(this);
    const CrispIcons crisp;
    painter.drawControl(QStyle::CE_CheckBox, option);
}
