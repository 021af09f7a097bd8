// SPDX-License-Identifier: MIT

#include "kova-menu.h"

#include "kovakit-qt/accessibility/named-action_p.h"
#include "kovakit-qt/utils/input-guards_p.h"

#include <QScreen>

#include <algorithm>

namespace {

int pulledBack(int begin, int length, int first, int last)
{
    if (begin < first)
        return 0;
    if (begin + length > last)
        return last - length;
    return begin;
}

int distance(const QRect &area, const QPoint &point)
{
    const int dx = std::max({area.left() - point.x(), point.x() - area.right(), 0});
    const int dy = std::max({area.top() - point.y(), point.y() - area.bottom(), 0});
    return dx + dy;
}

// The screens that share a desktop with @p screen are its siblings; alone, it is its only one.
const QScreen *screenAt(const QPoint &point, const QScreen *screen)
{
    const QList<QScreen *> screens = screen->virtualSiblings();
    return *std::min_element(
        screens.begin(), screens.end(), [&point](const QScreen *a, const QScreen *b) {
            return distance(a->geometry(), point) < distance(b->geometry(), point);
        });
}

} // namespace

KovaMenu::KovaMenu(QWidget *parent)
    : QMenu(parent)
{
    dropLateClicks(this);
    speakForEntries(this);
}

QPoint KovaMenu::positionOnScreen(const QRect &menu, const QRect &workArea)
{
    return {pulledBack(menu.x(), menu.width(), workArea.left(), workArea.right()),
            pulledBack(menu.y(), menu.height(), workArea.top(), workArea.bottom())};
}

void KovaMenu::showEvent(QShowEvent *event)
{
    QMenu::showEvent(event);
    const QRect workArea = screenAt(pos(), screen())->availableGeometry();
    const QPoint position = positionOnScreen(QRect(pos(), size()), workArea);
    if (position != pos())
        move(position);
}
