// SPDX-License-Identifier: MIT

#include "kova-paging-bar.h"

#include "arrow-button_p.h"

#include "kovakit-qt/accessibility/announcement_p.h"
#include "kovakit-qt/utils/component-strings_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-icon-button.h>
#include <kovakit-qt/widgets/kova-paging-model.h>

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QSignalMapper>

#include <array>

namespace {

constexpr int currentIndex = 2;
constexpr int jump = 5;

KovaIconButton *makeIconButton(const char *imageName, const char *tooltipKey)
{
    auto *button = new KovaIconButton(QString::fromLatin1(imageName));
    nameButton(button, componentString(tooltipKey));
    return button;
}

QString pageName(qint64 number)
{
    return componentString("accessible_page", "%1").arg(number);
}

QString currentPageDescription(int page, int pageCount)
{
    return componentString("accessible_current_page", "%1 / %2").arg(page).arg(pageCount);
}

} // namespace

class KovaPagingBar::Private
{
public:
    Private(KovaPagingBar *bar, KovaPagingModel *pagingModel)
        : q(bar)
        , model(pagingModel)
        , pageClicks(new QSignalMapper(bar))
    {
        refreshButton->setFixedSize(kovaPx(24), kovaPx(24));
    }

    void addPageButtons();
    void showNumber(KovaButton *button, qint64 number, int pageCount);
    void setControlEnabled(QWidget *control, bool enabled);
    void showArrows();
    void goTo(qint64 page);
    [[nodiscard]] QLabel *makeFooterLabel(const PagingFooterInfo &info, bool first) const;

    KovaPagingBar *const q;
    KovaPagingModel *const model;
    QHBoxLayout *const mainLayout = new QHBoxLayout;
    QHBoxLayout *const rightLayout = new QHBoxLayout;
    KovaIconButton *const firstButton = makeIconButton("bt_pagebar_backend", "first_page");
    KovaIconButton *const backButton = makeIconButton("bt_pagebar_back", "prev_5_pages");
    KovaIconButton *const forwardButton = makeIconButton("bt_pagebar_next", "next_5_pages");
    KovaIconButton *const lastButton = makeIconButton("bt_pagebar_nextend", "last_page");
    std::array<KovaButton *, 5> pageButtons{};
    QSignalMapper *const pageClicks;
    bool isInPageClick = false;
    KovaIconButton *const refreshButton = makeIconButton("bt_pagebar_refresh", "pagebar_refresh");
    std::vector<QLabel *> footerLabels;
};

KovaPagingBar::KovaPagingBar(KovaPagingModel *model, QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this, model))
{
    d->model->setNowPage(1);
    d->model->setItemCount(0);

    d->mainLayout->setSpacing(0);
    d->mainLayout->setContentsMargins(0, 0, 0, 0);
    d->mainLayout->addSpacing(kovaPx(50));
    d->mainLayout->addWidget(d->firstButton, 0, Qt::AlignLeft);
    d->mainLayout->addWidget(d->backButton, 0, Qt::AlignLeft);
    d->mainLayout->addStretch();
    d->addPageButtons();
    d->mainLayout->addStretch();
    d->mainLayout->addWidget(d->forwardButton, 0, Qt::AlignRight);
    d->mainLayout->addWidget(d->lastButton, 0, Qt::AlignRight);
    d->mainLayout->addSpacing(kovaPx(50));

    d->rightLayout->setDirection(QBoxLayout::RightToLeft);
    d->rightLayout->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    d->rightLayout->setSpacing(0);
    d->rightLayout->setContentsMargins(0, kovaPx(2), 0, 0);
    d->rightLayout->addWidget(d->refreshButton, 0, Qt::AlignCenter);
    d->mainLayout->addLayout(d->rightLayout);

    auto *frame = new QWidget;
    frame->setObjectName(QStringLiteral("PAGINGBARBORDER"));
    frame->setStyleSheet(getStyleSheet("component.paging_bar_border", false));
    frame->setFixedHeight(kovaPx(29));
    frame->setLayout(d->mainLayout);
    auto *layout = new QHBoxLayout(this);
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(frame);

    connect(d->firstButton, &KovaIconButton::clicked, this, &KovaPagingBar::first_page);
    connect(d->backButton, &KovaIconButton::clicked, this, &KovaPagingBar::prev_5_page);
    connect(d->forwardButton, &KovaIconButton::clicked, this, &KovaPagingBar::next_5_page);
    connect(d->lastButton, &KovaIconButton::clicked, this, &KovaPagingBar::last_page);
    connect(d->refreshButton, &KovaIconButton::clicked, this, &KovaPagingBar::sigRefresh);
    if (isRightToLeft())
        d->showArrows();
}

KovaPagingBar::~KovaPagingBar()
{
    if (!d->isInPageClick)
        return;
    // The mapper goes on after it told of the click in which the host deletes the bar.
    d->pageClicks->setParent(nullptr);
    d->pageClicks->deleteLater();
}

void KovaPagingBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LayoutDirectionChange)
        d->showArrows();
    QWidget::changeEvent(event);
}

void KovaPagingBar::Private::showArrows()
{
    showArrow(firstButton, "bt_pagebar_backend", "bt_pagebar_nextend");
    showArrow(backButton, "bt_pagebar_back", "bt_pagebar_next");
    showArrow(forwardButton, "bt_pagebar_next", "bt_pagebar_back");
    showArrow(lastButton, "bt_pagebar_nextend", "bt_pagebar_backend");
}

void KovaPagingBar::Private::addPageButtons()
{
    for (int index = 0; index < int(pageButtons.size()); ++index) {
        if (index > 0)
            mainLayout->addSpacing(kovaPx(4));
        auto *button = new KovaButton(QString(), index == currentIndex ? KovaButton::SelectedPage
                                                                       : KovaButton::OtherPage);
        button->setFixedHeight(kovaPx(27));
        button->setMinimumWidth(kovaPx(28));
        connect(button, &KovaButton::clicked, pageClicks, QOverload<>::of(&QSignalMapper::map));
        mainLayout->addWidget(button, 0, Qt::AlignHCenter);
        pageClicks->setMapping(button, index);
        pageButtons.at(std::size_t(index)) = button;
    }
    KovaButton *current = pageButtons[currentIndex];
    current->setText(QStringLiteral("1"));
    current->setAccessibleName(pageName(1));
    current->setAccessibleDescription(currentPageDescription(1, 1));
    connect(pageClicks, &QSignalMapper::mappedInt, q, &KovaPagingBar::pageClick);
}

void KovaPagingBar::setPage(int page)
{
    const int pageCount = d->model->pageCount();
    qint64 number = qint64(page) - currentIndex;
    for (KovaButton *button : d->pageButtons)
        d->showNumber(button, number++, pageCount);
    d->pageButtons[currentIndex]->setAccessibleDescription(currentPageDescription(page, pageCount));

    d->setControlEnabled(d->forwardButton, page < pageCount);
    d->setControlEnabled(d->lastButton, page < pageCount);
    d->setControlEnabled(d->firstButton, page != 1);
    d->setControlEnabled(d->backButton, page != 1);
    d->model->setNowPage(page);
}

void KovaPagingBar::Private::showNumber(KovaButton *button, qint64 number, int pageCount)
{
    const bool exists = number >= 1 && number <= pageCount;
    button->setText(exists ? QString::number(number) : QStringLiteral(" "));
    button->setAccessibleName(exists ? pageName(number) : QString());
    setControlEnabled(button, exists);
}

void KovaPagingBar::Private::setControlEnabled(QWidget *control, bool enabled)
{
    // Left to itself the focus would walk on, perhaps out of the bar, under the user's fingers.
    if (!enabled && control->hasFocus())
        pageButtons[currentIndex]->setFocus();
    control->setEnabled(enabled);
}

void KovaPagingBar::setItemCount(int count)
{
    d->model->setItemCount(count);
    setPage(d->model->nowPage());
}

void KovaPagingBar::reset()
{
    first_page();
}

void KovaPagingBar::setRefreshButtonHidden(bool hidden)
{
    d->refreshButton->setHidden(hidden);
}

void KovaPagingBar::setFooterInfos(const std::vector<PagingFooterInfo> &infos)
{
    for (std::size_t i = 0; i < infos.size(); ++i) {
        if (i < d->footerLabels.size()) {
            d->footerLabels[i]->setText(infos[i].text);
            if (infos[i].width != 0)
                d->footerLabels[i]->setFixedWidth(kovaPx(infos[i].width));
            continue;
        }
        d->footerLabels.push_back(d->makeFooterLabel(infos[i], i == 0));
        d->rightLayout->addWidget(d->footerLabels.back());
    }
    while (d->footerLabels.size() > infos.size()) {
        QLabel *label = d->footerLabels.back();
        label->hide();
        d->rightLayout->removeWidget(label);
        d->footerLabels.pop_back();
    }
}

QLabel *KovaPagingBar::Private::makeFooterLabel(const PagingFooterInfo &info, bool first) const
{
    auto *label = new QLabel(info.text);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setFixedHeight(kovaPx(19));
    if (info.width != 0)
        label->setFixedWidth(kovaPx(info.width));
    const bool rightmost = first && refreshButton->isHidden();
    label->setStyleSheet(getStyleSheet(
        rightmost ? "component.paging_bar_rightmost_label" : "component.paging_bar_label", false));
    return label;
}

void KovaPagingBar::setFooterInfo(const PagingFooterInfo &info)
{
    setFooterInfos({info});
}

void KovaPagingBar::setFooterText(const QString &text)
{
    setFooterInfo({text, 0});
}

void KovaPagingBar::Private::goTo(qint64 page)
{
    const int before = model->nowPage();
    q->setPage(int(page));
    // The button that was pressed shows another number by now.
    if (model->nowPage() != before)
        announce(q, pageButtons[currentIndex]->accessibleDescription());
    Q_EMIT q->sigPageChanged();
}

void KovaPagingBar::pageClick(int index)
{
    if (index < 0 || index >= int(d->pageButtons.size()))
        return;
    const KovaButton *button = d->pageButtons.at(std::size_t(index));
    const int page = button->text().toInt();
    // A press by assistive technology clicks a moment later, when the number may be gone.
    if (page < 1 || !button->isEnabled())
        return;
    const QPointer<KovaPagingBar> guard(this);
    d->isInPageClick = true;
    d->goTo(page);
    if (guard)
        d->isInPageClick = false;
}

void KovaPagingBar::next_5_page()
{
    d->goTo(qMin(qint64(d->model->nowPage()) + jump, qint64(d->model->pageCount())));
}

void KovaPagingBar::prev_5_page()
{
    d->goTo(qMax(qint64(d->model->nowPage()) - jump, qint64(1)));
}

void KovaPagingBar::first_page()
{
    d->goTo(1);
}

void KovaPagingBar::last_page()
{
    d->goTo(d->model->pageCount());
}
