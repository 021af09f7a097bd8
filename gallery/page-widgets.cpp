// SPDX-License-Identifier: MIT

#include "page-widgets.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

QLabel *makeText(const QString &text, const char *styleKey)
{
    auto *label = new QLabel(text);
    setStyleKey(label, styleKey);
    return label;
}

} // namespace

void setStyleKey(QWidget *widget, const char *styleKey)
{
    widget->setStyleSheet(getStyleSheet(styleKey, false));
}

QLabel *makeSectionTitle(const QString &text)
{
    return makeText(text, "gallery.section_title");
}

QLabel *makeCaption(const QString &text)
{
    QLabel *label = makeText(text, "gallery.caption");
    label->setWordWrap(true);
    return label;
}

QLabel *makeRowLabel(const QString &text)
{
    return makeText(text, "gallery.caption");
}

Card::Card(const QString &title, const QString &caption)
    : m_column(new QVBoxLayout(this))
{
    setStyleKey(this, "gallery.card");
    m_column->setContentsMargins(kovaPx(16), kovaPx(12), kovaPx(16), kovaPx(14));
    m_column->setSpacing(kovaPx(8));
    m_column->addWidget(makeSectionTitle(title));
    if (!caption.isEmpty())
        m_column->addWidget(makeCaption(caption));
    m_column->setAlignment(Qt::AlignTop);
}

void Card::add(QWidget *widget)
{
    m_column->addWidget(widget);
}

void Card::addGrowing(QWidget *widget)
{
    m_column->addWidget(widget, 1);
    m_column->setAlignment(Qt::Alignment());
}

void Card::addGrowing(QLayout *layout)
{
    m_column->addLayout(layout, 1);
    m_column->setAlignment(Qt::Alignment());
}

void Card::add(QLayout *layout)
{
    m_column->addLayout(layout);
}

void Card::addRow(std::initializer_list<QWidget *> widgets)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(kovaPx(8));
    for (QWidget *widget : widgets)
        row->addWidget(widget);
    row->addStretch(1);
    m_column->addLayout(row);
}

void Card::addExplained(QWidget *widget, const QString &explanation, int width)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(kovaPx(14));
    widget->setFixedWidth(kovaPx(width));
    row->addWidget(widget);
    row->addWidget(makeCaption(explanation), 1);
    m_column->addLayout(row);
}
