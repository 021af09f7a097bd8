// SPDX-License-Identifier: MIT

#include "link-label.h"

#include "kovakit-qt/accessibility/link-accessible_p.h"
#include "kovakit-qt/utils/keys_p.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

class LinkLabel::Private
{
public:
    explicit Private(LinkLabel *label)
        : q(label)
    {
    }

    void startHover();
    void endHover();
    void setUnderlined(bool underlined);

    LinkLabel *const q;
    QString hyperLink;
    bool holdsCursor = false;
};

LinkLabel::LinkLabel(const QString &text, QLabel *parent)
    : QLabel(parent)
    , d(std::make_unique<Private>(this))
{
    installLinkAccessibility<LinkLabel>();
    // Given to the base, the text would make Qt settle on the interface of a plain label.
    setText(text);
    setFocusPolicy(Qt::StrongFocus);
}

LinkLabel::~LinkLabel()
{
    if (d->holdsCursor)
        QGuiApplication::restoreOverrideCursor();
}

void LinkLabel::setHyperLink(const QString &link)
{
    d->hyperLink = link;
}

QString LinkLabel::getHyperLink() const
{
    return d->hyperLink;
}

void LinkLabel::mousePressEvent(QMouseEvent *event)
{
    const QPointer<LinkLabel> guard(this);
    Q_EMIT clicked();
    if (guard)
        QLabel::mousePressEvent(event);
}

void LinkLabel::keyPressEvent(QKeyEvent *event)
{
    if (!isReturn(event) && event->key() != Qt::Key_Space)
        QLabel::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        Q_EMIT clicked();
}

void LinkLabel::enterEvent(QEvent *event)
{
    if (isEnabled())
        d->startHover();
    QLabel::enterEvent(event);
}

void LinkLabel::leaveEvent(QEvent *event)
{
    if (isEnabled()) {
        d->endHover();
        QLabel::leaveEvent(event);
    } else {
        d->holdsCursor = false;
        QLabel::enterEvent(event);
    }
}

void LinkLabel::hideEvent(QHideEvent *event)
{
    if (d->holdsCursor)
        d->endHover();
    QLabel::hideEvent(event);
}

void LinkLabel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange && isEnabled() && isVisible() && underMouse())
        d->startHover();
    QLabel::changeEvent(event);
}

void LinkLabel::Private::startHover()
{
    if (!holdsCursor)
        QGuiApplication::setOverrideCursor(Qt::PointingHandCursor);
    holdsCursor = true;
    setUnderlined(true);
}

void LinkLabel::Private::endHover()
{
    if (holdsCursor)
        QGuiApplication::restoreOverrideCursor();
    holdsCursor = false;
    setUnderlined(false);
}

void LinkLabel::Private::setUnderlined(bool underlined)
{
    QFont changed = q->font();
    changed.setUnderline(underlined);
    q->setFont(changed);
}

void LinkLabel::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    QStylePainter(this).drawPrimitive(QStyle::PE_FrameFocusRect, option);
}
