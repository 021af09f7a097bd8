#include "kova-footbar.h"

#include <kovakit-qt/style/dpi-info.h>

#include <QHBoxLayout>

KovaFootbar::KovaFootbar(QWidget *parent)
    : QWidget(parent)
    , m_layout(new QHBoxLayout(this))
{
}

void KovaFootbar::pushLeftWidget(QWidget *w)
{
    m_leftWidgets.append(w);
}

void KovaFootbar::pushRightWidget(QWidget *w)
{
    m_rightWidgets.append(w);
}

void KovaFootbar::init()
{
    setMargins(20, 8, 20, 8);
    setSpacing(10);
    m_layout->setAlignment(Qt::AlignLeft);
    addGroup(m_leftWidgets);
    m_layout->addStretch(1);
    addGroup(m_rightWidgets);
}

void KovaFootbar::addGroup(const QList<QPointer<QWidget>> &widgets)
{
    for (const QPointer<QWidget> &widget : widgets) {
        if (widget)
            m_layout->addWidget(widget, 0, Qt::AlignVCenter);
    }
}

void KovaFootbar::setMargins(int left, int top, int right, int bottom)
{
    m_layout->setContentsMargins(kovaPx(left), kovaPx(top), kovaPx(right), kovaPx(bottom));
}

void KovaFootbar::setSpacing(int spacing)
{
    m_layout->setSpacing(kovaPx(spacing));
}
