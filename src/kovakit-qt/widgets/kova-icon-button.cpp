#include "kova-icon-button.h"

#include "kovakit-qt/style/crisp-icons_p.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QEvent>
#include <QMouseEvent>

namespace {

QString houseStyle()
{
    return getStyleSheet("component.icon_button", false);
}

} // namespace

KovaIconButton::KovaIconButton(const QPixmap &pixmap)
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
{
    setAllIcon(imageName);
    applyLook(style);
}

void KovaIconButton::initialize()
{
    applyLook(houseStyle());
}

void KovaIconButton::applyLook(const QString &style)
{
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setStyleSheet(style);
    setPopupMode(QToolButton::InstantPopup);
}

void KovaIconButton::setDefaultIcon(const QPixmap &pixmap)
{
    m_defaultIcon = QIcon(pixmap);
    m_pressIcon = m_defaultIcon;
    m_hoverIcon = m_defaultIcon;
    m_disableIcon = m_defaultIcon;
    setIconSizeFrom(pixmap);
    setIcon(m_defaultIcon);
}

void KovaIconButton::setPressIcon(const QPixmap &pixmap)
{
    m_pressIcon = QIcon(pixmap);
}

void KovaIconButton::setHoverIcon(const QPixmap &pixmap)
{
    m_hoverIcon = QIcon(pixmap);
}

void KovaIconButton::setDisableIcon(const QPixmap &pixmap)
{
    m_disableIcon = QIcon(pixmap);
}

void KovaIconButton::setAllIcon(const QString &imageName)
{
    ImageManager *images = ImageManager::getInstance();
    m_defaultIcon = images->getIcon(imageName, ImageManager::Default);
    m_hoverIcon = images->getIcon(imageName, ImageManager::Hover);
    m_pressIcon = images->getIcon(imageName, ImageManager::Click);
    m_disableIcon = images->getIcon(imageName, ImageManager::Disable);
    setIconSizeFrom(getGlobalImage(imageName, ImageManager::Default));
    setIcon(m_defaultIcon);
}

void KovaIconButton::setIconSizeFrom(const QPixmap &pixmap)
{
    const double ratio = DPIinfo::getInstance()->getDPR();
    m_iconSize = QSize(qRound(pixmap.width() / ratio), qRound(pixmap.height() / ratio));
}

void KovaIconButton::showIcon(const QIcon &icon)
{
    setIcon(icon);
    setIconSize(m_iconSize);
}

void KovaIconButton::showRestingIcon()
{
    showIcon(isEnabled() ? m_defaultIcon : m_disableIcon);
}

void KovaIconButton::paintEvent(QPaintEvent *event)
{
    const CrispIcons crisp;
    QToolButton::paintEvent(event);
}

void KovaIconButton::enterEvent(QEvent *event)
{
    if (isEnabled())
        showIcon(m_hoverIcon);
    QToolButton::enterEvent(event);
}

void KovaIconButton::leaveEvent(QEvent *event)
{
    if (isEnabled() && !hasFocus())
        showIcon(m_defaultIcon);
    QToolButton::leaveEvent(event);
}

void KovaIconButton::mousePressEvent(QMouseEvent *event)
{
    if (isEnabled())
        showIcon(m_pressIcon);
    QToolButton::mousePressEvent(event);
}

void KovaIconButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (isEnabled())
        showIcon(m_defaultIcon);
    if (popupMode() == MenuButtonPopup)
        QToolButton::mouseReleaseEvent(event);
    else
        // A tool button goes on after the click, in which the host may have deleted it.
        QAbstractButton::mouseReleaseEvent(event); // NOLINT(bugprone-parent-virtual-call)
}

void KovaIconButton::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange)
        showRestingIcon();
    QToolButton::changeEvent(event);
}

void KovaIconButton::showEvent(QShowEvent *event)
{
    showRestingIcon();
    // QToolButton has no handling of its own here.
    QWidget::showEvent(event); // NOLINT(bugprone-parent-virtual-call)
}
