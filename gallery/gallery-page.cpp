// SPDX-License-Identifier: MIT

#include "gallery-page.h"

#include <kovakit-qt/style/dpi-info.h>

#include <QBoxLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

GalleryPage::GalleryPage()
    : m_column(new QVBoxLayout)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(kovaPx(24), kovaPx(4), kovaPx(24), kovaPx(16));
    m_column->setSpacing(kovaPx(16));
    layout->addLayout(m_column);
    layout->addStretch(1);
}

void GalleryPage::add(QWidget *widget)
{
    m_column->addWidget(widget);
}

void GalleryPage::addGrowing(QWidget *widget)
{
    m_column->addWidget(widget, 1);
    auto *whole = static_cast<QBoxLayout *>(layout());
    whole->setStretchFactor(m_column, 1);
    whole->setStretch(1, 0);
}

void GalleryPage::addSideBySide(std::initializer_list<QWidget *> widgets)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(kovaPx(16));
    for (QWidget *widget : widgets)
        row->addWidget(widget, 1);
    m_column->addLayout(row);
}

void GalleryPage::addScene(const QString &name, std::function<void()> open,
                           std::function<bool()> ready)
{
    addPopup(nullptr, name, std::move(open), std::move(ready));
}

void GalleryPage::addPopup(QWidget *opener, const QString &name, std::function<void()> open,
                           std::function<bool()> ready)
{
    m_scenes.push_back({name, std::move(open), std::move(ready), opener});
}
