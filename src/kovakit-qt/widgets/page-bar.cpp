// SPDX-License-Identifier: MIT

#include "page-bar_p.h"

#include "arrow-button_p.h"

#include "kovakit-qt/style/optional-style_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/kova-icon-button.h>

#include <QEvent>
#include <QHBoxLayout>

namespace {

constexpr int designButtonSize = 28;
constexpr int designMargin = 4;

} // namespace

PageBar::PageBar(const char *objectName, QWidget *parent)
    : QWidget(parent)
    , m_row(new QHBoxLayout(this))
{
    hide();
    setObjectName(QLatin1String(objectName));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(optionalStyleSheet("component.help_bar"));
    const int margin = kovaPx(designMargin);
    m_row->setContentsMargins(margin, margin, margin, margin);
    m_row->setSpacing(margin);
}

KovaIconButton *PageBar::addButton(const QString &words, const char *image, const char *mirrored)
{
    auto *button = new KovaIconButton(QLatin1String(isRightToLeft() ? mirrored : image));
    button->setFixedSize(kovaPx(designButtonSize), kovaPx(designButtonSize));
    nameButton(button, words);
    m_row->addWidget(button);
    m_arrows.append({button, image, mirrored});
    return button;
}

void PageBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LayoutDirectionChange) {
        for (const Arrow &arrow : qAsConst(m_arrows))
            showArrow(arrow.button, arrow.image, arrow.mirrored);
    }
    QWidget::changeEvent(event);
}
