// SPDX-License-Identifier: MIT

#include "kova-icon-button.h"

#include "kovakit-qt/accessibility/button-accessible_p.h"
#include "kovakit-qt/image-manager/logical-size_p.h"
#include "kovakit-qt/style/crisp-icons_p.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/style-manager.h>

#include <QAbstractButton>
#include <QEvent>
#include <QIcon>

namespace {

QString houseStyle()
{
    return getStyleSheet("component.icon_button", false);
}

} // namespace

class KovaIconButton::Private
{
public:
    explicit Private(KovaIconButton *button)
        : q(button)
    {
    }

    void applyLook(const QString &style);
    void showIcon(const QIcon &icon);
    void showRestingIcon();

    KovaIconButton *const q;
    QIcon defaultIcon;
    QIcon pressIcon;
    QIcon hoverIcon;
    QIcon disableIcon;
    QSize iconSize{-1, -1};
};

KovaIconButton::KovaIconButton(const QPixmap &pixmap)
    : d(std::make_unique<Private>(this))
{
    setDefaultIcon(pixmap);
    initialize();
}

KovaIconButton::KovaIconButton(const QString &imageName)
    : KovaIconButton(imageName, houseStyle(), nullptr)
{
}

KovaIconButton::KovaIconButton(const QString &imageName, const QString &style, QWidget *parent)
    : QToolButton(parent)
    , d(std::make_unique<Private>(this))
{
    setAllIcon(imageName);
    d->applyLook(style);
}

KovaIconButton::~KovaIconButton() = default;

void KovaIconButton::initialize()
{
    d->applyLook(houseStyle());
}

void KovaIconButton::Private::applyLook(const QString &style)
{
    installButtonAccessibility<KovaIconButton>();
    q->setToolButtonStyle(Qt::ToolButtonIconOnly);
    q->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    q->setStyleSheet(style);
    q->setPopupMode(QToolButton::InstantPopup);
}

void KovaIconButton::setDefaultIcon(const QPixmap &pixmap)
{
    d->defaultIcon = QIcon(pixmap);
    d->pressIcon = d->defaultIcon;
    d->hoverIcon = d->defaultIcon;
    d->disableIcon = d->defaultIcon;
    d->iconSize = logicalSize(pixmap);
    setIcon(d->defaultIcon);
}

void KovaIconButton::setPressIcon(const QPixmap &pixmap)
{
    d->pressIcon = QIcon(pixmap);
}

void KovaIconButton::setHoverIcon(const QPixmap &pixmap)
{
    d->hoverIcon = QIcon(pixmap);
}

void KovaIconButton::setDisableIcon(const QPixmap &pixmap)
{
    d->disableIcon = QIcon(pixmap);
}

void KovaIconButton::setAllIcon(const QString &imageName)
{
    ImageManager *images = ImageManager::getInstance();
    d->defaultIcon = images->getIcon(imageName, ImageManager::Default);
    d->hoverIcon = images->getIcon(imageName, ImageManager::Hover);
    d->pressIcon = images->getIcon(imageName, ImageManager::Click);
    d->disableIcon = images->getIcon(imageName, ImageManager::Disable);
    d->iconSize = logicalSize(getGlobalImage(imageName, ImageManager::Default));
    setIcon(d->defaultIcon);
}

void KovaIconButton::Private::showIcon(const QIcon &icon)
{
    q->setIcon(icon);
    q->setIconSize(iconSize);
}

void KovaIconButton::Private::showRestingIcon()
{
    showIcon(q->isEnabled() ? defaultIcon : disableIcon);
}

void KovaIconButton::paintEvent(QPaintEvent *event)
{
    const CrispIcons crisp;
    QToolButton::paintEvent(event);
}

void KovaIconButton::enterEvent(QEvent *event)
{
    if (isEnabled())
        d->showIcon(d->hoverIcon);
    QToolButton::enterEvent(event);
}

void KovaIconButton::leaveEvent(QEvent *event)
{
    if (isEnabled() && !hasFocus())
        d->showIcon(d->defaultIcon);
    QToolButton::leaveEvent(event);
}

void KovaIconButton::mousePressEvent(QMouseEvent *event)
{
    if (isEnabled())
        d->showIcon(d->pressIcon);
    QToolButton::mousePressEvent(event);
}

void KovaIconButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (isEnabled())
        d->showIcon(d->defaultIcon);
    if (popupMode() == MenuButtonPopup)
        QToolButton::mouseReleaseEvent(event);
    else
        // A tool button goes on after the click, in which the host may have deleted it.
        QAbstractButton::mouseReleaseEvent(event); // NOLINT(bugprone-parent-virtual-call)
}

void KovaIconButton::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange)
        d->showRestingIcon();
    QToolButton::changeEvent(event);
}

void KovaIconButton::showEvent(QShowEvent *event)
{
    d->showRestingIcon();
    // QToolButton has no handling of its own here.
    QWidget::showEvent(event); // NOLINT(bugprone-parent-virtual-call)
}
