// SPDX-License-Identifier: MIT

#include "arrow-button_p.h"

#include <kovakit-qt/widgets/kova-icon-button.h>

#include <QCoreApplication>
#include <QEvent>

void showArrow(KovaIconButton *button, const char *image, const char *mirrored)
{
    button->setAllIcon(QLatin1String(button->isRightToLeft() ? mirrored : image));
    // New pictures show as at rest, enabled or not.
    QEvent state(QEvent::EnabledChange);
    QCoreApplication::sendEvent(button, &state);
}

void nameButton(KovaIconButton *button, const QString &words)
{
    button->setToolTip(words);
    button->setAccessibleName(words);
}
