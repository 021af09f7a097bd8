// SPDX-License-Identifier: MIT

#include "kova-mask.h"

#include <QChildEvent>
#include <QEvent>
#include <QHBoxLayout>
#include <QPalette>

class KovaMaskPrivate : public QObject
{
public:
    explicit KovaMaskPrivate(KovaMask *mask)
        : QObject(mask)
        , q(mask)
    {
    }

    void init(QWidget *content);
    void deleteIfEmpty();

    KovaMask *q;
    QColor color = KovaMask::dimColor;
    QWidget *widget = nullptr;
    KovaMask::DeletionPolicy policy = KovaMask::KeepWhenEmpty;
};

namespace {

// Refits a mask whenever the widget that it covers is resized.
class ParentEventFilterWidget : public QObject
{
public:
    ParentEventFilterWidget(KovaMask *coveringMask, QWidget *coveredParent)
        : QObject(coveringMask)
        , mask(coveringMask)
        , parent(coveredParent)
    {
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == parent && event->type() == QEvent::Resize)
            mask->resize();
        return false;
    }

private:
    KovaMask *mask;
    QWidget *parent;
};

} // namespace

void KovaMaskPrivate::init(QWidget *content)
{
    auto *layout = new QHBoxLayout(q);
    QPalette palette = q->palette();
    palette.setBrush(QPalette::All, QPalette::Window, QBrush(color));
    q->setPalette(palette);
    q->setAutoFillBackground(true);
    layout->addWidget(content);
    widget = content;
    q->resize();
}

void KovaMaskPrivate::deleteIfEmpty()
{
    if (!widget && policy == KovaMask::DeleteWhenEmpty)
        q->deleteLater();
}

KovaMask::KovaMask(QWidget *widget, QWidget *parent, QColor color)
    : QFrame(parent)
    , d(new KovaMaskPrivate(this))
{
    d->color = color;
    d->init(widget);
    widget->installEventFilter(this);
    parent->installEventFilter(new ParentEventFilterWidget(this, parent));
}

KovaMask::~KovaMask() = default;

QWidget *KovaMask::createMask(QWidget *widget, QWidget *parent, QColor color)
{
    return createMask(widget, parent, color, KeepWhenEmpty);
}

QWidget *KovaMask::createMask(QWidget *widget, QWidget *parent, QColor color, DeletionPolicy policy)
{
    if (!widget)
        return nullptr;
    if (!parent)
        parent = widget->parentWidget();
    // A mask that loses its content hides, and would hide a new mask inside it as well.
    if (const auto *mask = qobject_cast<KovaMask *>(parent); mask && mask->d->widget == widget)
        parent = mask->parentWidget();
    if (!parent)
        return nullptr;
    auto *mask = new KovaMask(widget, parent, color);
    mask->setDeletionPolicy(policy);
    return widget;
}

KovaMask::DeletionPolicy KovaMask::deletionPolicy() const
{
    return d->policy;
}

void KovaMask::setDeletionPolicy(DeletionPolicy policy)
{
    d->policy = policy;
    d->deleteIfEmpty();
}

void KovaMask::resize()
{
    setFixedSize(window()->size());
}

bool KovaMask::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != d->widget)
        return false;
    if (event->type() == QEvent::ShowToParent) {
        // Widgets that the window got since must not lie above the dimmed layer.
        raise();
        show();
    } else if (event->type() == QEvent::HideToParent) {
        hide();
    }
    return false;
}

// QObject sends the event when the content moves elsewhere, and when it dies while it is shown.
void KovaMask::childEvent(QChildEvent *event)
{
    QFrame::childEvent(event);
    if (!event->removed() || event->child() != d->widget)
        return;
    event->child()->removeEventFilter(this);
    d->widget = nullptr;
    hide();
    d->deleteIfEmpty();
}
