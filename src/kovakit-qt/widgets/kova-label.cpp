// SPDX-License-Identifier: MIT

#include "kova-label.h"

#include <kovakit-qt/style/style-manager.h>

KovaLabel::KovaLabel(QWidget *parent, Qt::WindowFlags f)
    : KovaLabel(QString(), parent, f)
{
}

KovaLabel::KovaLabel(const QString &text, QWidget *parent, Qt::WindowFlags f)
    : QLabel(text, parent, f)
{
    setStyleSheet(getStyleSheet("component.label", false));
}

void KovaLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    if (!wordWrap() || sizePolicy().verticalPolicy() != QSizePolicy::Minimum)
        return;
    // The old minimum would count as a need of the text and keep the label from shrinking.
    setMinimumHeight(0);
    setMinimumHeight(qMax(0, heightForWidth(width())));
}
