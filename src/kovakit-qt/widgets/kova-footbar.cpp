// SPDX-License-Identifier: MIT

#include "kova-footbar.h"

#include <kovakit-qt/style/dpi-info.h>

#include <QHBoxLayout>
#include <QList>
#include <QPointer>

class KovaFootbar::Private
{
public:
    explicit Private(KovaFootbar *footbar)
        : layout(new QHBoxLayout(footbar))
    {
    }

    void addGroup(const QList<QPointer<QWidget>> &widgets);

    QHBoxLayout *const layout;
    QList<QPointer<QWidget>> leftWidgets;
    QList<QPointer<QWidget>> rightWidgets;
};

KovaFootbar::KovaFootbar(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
}

KovaFootbar::~KovaFootbar() = default;

void KovaFootbar::pushLeftWidget(QWidget *w)
{
    d->leftWidgets.append(w);
}

void KovaFootbar::pushRightWidget(QWidget *w)
{
    d->rightWidgets.append(w);
}

void KovaFootbar::init()
{
    setMargins(20, 8, 20, 8);
    setSpacing(10);
    d->layout->setAlignment(Qt::AlignLeft);
    d->addGroup(d->leftWidgets);
    d->layout->addStretch(1);
    d->addGroup(d->rightWidgets);
}

void KovaFootbar::Private::addGroup(const QList<QPointer<QWidget>> &widgets)
{
    for (const QPointer<QWidget> &widget : widgets) {
        if (widget)
            layout->addWidget(widget, 0, Qt::AlignVCenter);
    }
}

void KovaFootbar::setMargins(int left, int top, int right, int bottom)
{
    d->layout->setContentsMargins(kovaPx(left), kovaPx(top), kovaPx(right), kovaPx(bottom));
}

void KovaFootbar::setSpacing(int spacing)
{
    d->layout->setSpacing(kovaPx(spacing));
}
