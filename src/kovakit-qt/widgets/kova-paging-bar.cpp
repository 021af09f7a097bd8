#include "kova-paging-bar.h"

#include "kovakit-qt/utils/component-strings_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/component-strings.h>
#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-icon-button.h>
#include <kovakit-qt/widgets/kova-paging-model.h>

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QSignalMapper>

namespace {

constexpr int currentIndex = 2;
constexpr int jump = 5;

// Hosts may do without these words, so that nobody has to be warned of their absence.
QString optionalString(const QString &key, const QString &substitute)
{
    const ComponentStrings *strings = ComponentStrings::getInstance();
    return strings->hasString(key) ? strings->getString(key) : substitute;
}

KovaIconButton *makeArrowButton(const char *imageName, const char *tooltipKey)
{
    auto *button = new KovaIconButton(QString::fromLatin1(imageName));
    const QString text = componentString(tooltipKey);
    button->setToolTip(text);
    button->setAccessibleName(text);
    return button;
}

KovaIconButton *makeRefreshButton()
{
    auto *button = new KovaIconButton(QStringLiteral("bt_pagebar_refresh"));
    const QString text = componentString("pagebar_refresh");
    button->setToolTip(text);
    button->setAccessibleName(text);
    button->setFixedSize(kovaPx(24), kovaPx(24));
    return button;
}

QString pageName(qint64 number)
{
    return optionalString(QStringLiteral("accessible_page"), QStringLiteral("%1")).arg(number);
}

QString currentPageDescription(int page, int pageCount)
{
    return optionalString(QStringLiteral("accessible_current_page"), QStringLiteral("%1 / %2"))
        .arg(page)
        .arg(pageCount);
}

} // namespace

KovaPagingBar::KovaPagingBar(KovaPagingModel *model, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_mainLayout(new QHBoxLayout)
    , m_rightLayout(new QHBoxLayout)
    , m_firstButton(makeArrowButton("bt_pagebar_backend", "first_page"))
    , m_backButton(makeArrowButton("bt_pagebar_back", "prev_5_pages"))
    , m_forwardButton(makeArrowButton("bt_pagebar_next", "next_5_pages"))
    , m_lastButton(makeArrowButton("bt_pagebar_nextend", "last_page"))
    , m_pageClicks(new QSignalMapper(this))
    , m_refreshButton(makeRefreshButton())
{
    m_model->setNowPage(1);
    m_model->setItemCount(0);

    m_mainLayout->setSpacing(0);
    m_mainLayout->setContentsMargins(0, 0, 0, 0);
    m_mainLayout->addSpacing(kovaPx(50));
    m_mainLayout->addWidget(m_firstButton, 0, Qt::AlignLeft);
    m_mainLayout->addWidget(m_backButton, 0, Qt::AlignLeft);
    m_mainLayout->addStretch();
    addPageButtons(m_mainLayout);
    m_mainLayout->addStretch();
    m_mainLayout->addWidget(m_forwardButton, 0, Qt::AlignRight);
    m_mainLayout->addWidget(m_lastButton, 0, Qt::AlignRight);
    m_mainLayout->addSpacing(kovaPx(50));

    m_rightLayout->setDirection(QBoxLayout::RightToLeft);
    m_rightLayout->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_rightLayout->setSpacing(0);
    m_rightLayout->setContentsMargins(0, kovaPx(2), 0, 0);
    m_rightLayout->addWidget(m_refreshButton, 0, Qt::AlignCenter);
    m_mainLayout->addLayout(m_rightLayout);

    auto *frame = new QWidget;
    frame->setObjectName(QStringLiteral("PAGINGBARBORDER"));
    frame->setStyleSheet(getStyleSheet("component.paging_bar_border", false));
    frame->setFixedHeight(kovaPx(29));
    frame->setLayout(m_mainLayout);
    auto *layout = new QHBoxLayout(this);
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(frame);

    connect(m_firstButton, &KovaIconButton::clicked, this, &KovaPagingBar::first_page);
    connect(m_backButton, &KovaIconButton::clicked, this, &KovaPagingBar::prev_5_page);
    connect(m_forwardButton, &KovaIconButton::clicked, this, &KovaPagingBar::next_5_page);
    connect(m_lastButton, &KovaIconButton::clicked, this, &KovaPagingBar::last_page);
    connect(m_refreshButton, &KovaIconButton::clicked, this, &KovaPagingBar::sigRefresh);
    if (isRightToLeft())
        showArrows();
}

KovaPagingBar::~KovaPagingBar()
{
    if (!m_isInPageClick)
        return;
    // The mapper goes on after it told of the click in which the host deletes the bar.
    m_pageClicks->setParent(nullptr);
    m_pageClicks->deleteLater();
}

void KovaPagingBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LayoutDirectionChange)
        showArrows();
    QWidget::changeEvent(event);
}

void KovaPagingBar::showArrows()
{
    const auto show = [this](KovaIconButton *button, const char *image, const char *mirrored) {
        button->setAllIcon(QLatin1String(isRightToLeft() ? mirrored : image));
        // New pictures show as at rest, enabled or not.
        QEvent state(QEvent::EnabledChange);
        QCoreApplication::sendEvent(button, &state);
    };
    show(m_firstButton, "bt_pagebar_backend", "bt_pagebar_nextend");
    show(m_backButton, "bt_pagebar_back", "bt_pagebar_next");
    show(m_forwardButton, "bt_pagebar_next", "bt_pagebar_back");
    show(m_lastButton, "bt_pagebar_nextend", "bt_pagebar_backend");
}

void KovaPagingBar::addPageButtons(QHBoxLayout *layout)
{
    for (int index = 0; index < int(m_pageButtons.size()); ++index) {
        if (index > 0)
            layout->addSpacing(kovaPx(4));
        auto *button = new KovaButton(QString(), index == currentIndex ? KovaButton::SelectedPage
                                                                       : KovaButton::OtherPage);
        button->setFixedHeight(kovaPx(27));
        button->setMinimumWidth(kovaPx(28));
        connect(button, &KovaButton::clicked, m_pageClicks, QOverload<>::of(&QSignalMapper::map));
        layout->addWidget(button, 0, Qt::AlignHCenter);
        m_pageClicks->setMapping(button, index);
        m_pageButtons.at(std::size_t(index)) = button;
    }
    KovaButton *current = m_pageButtons[currentIndex];
    current->setText(QStringLiteral("1"));
    current->setAccessibleName(pageName(1));
    current->setAccessibleDescription(currentPageDescription(1, 1));
    connect(m_pageClicks, &QSignalMapper::mappedInt, this, &KovaPagingBar::pageClick);
}

void KovaPagingBar::setPage(int page)
{
    const int pageCount = m_model->pageCount();
    qint64 number = qint64(page) - currentIndex;
    for (KovaButton *button : m_pageButtons)
        showNumber(button, number++, pageCount);
    m_pageButtons[currentIndex]->setAccessibleDescription(currentPageDescription(page, pageCount));

    setControlEnabled(m_forwardButton, page < pageCount);
    setControlEnabled(m_lastButton, page < pageCount);
    setControlEnabled(m_firstButton, page != 1);
    setControlEnabled(m_backButton, page != 1);
    m_model->setNowPage(page);
}

void KovaPagingBar::showNumber(KovaButton *button, qint64 number, int pageCount)
{
    const bool exists = number >= 1 && number <= pageCount;
    button->setText(exists ? QString::number(number) : QStringLiteral(" "));
    button->setAccessibleName(exists ? pageName(number) : QString());
    setControlEnabled(button, exists);
}

void KovaPagingBar::setControlEnabled(QWidget *control, bool enabled)
{
    // Left to itself the focus would walk on, perhaps out of the bar, under the user's fingers.
    if (!enabled && control->hasFocus())
        m_pageButtons[currentIndex]->setFocus();
    control->setEnabled(enabled);
}

void KovaPagingBar::setItemCount(int count)
{
    m_model->setItemCount(count);
    setPage(m_model->nowPage());
}

void KovaPagingBar::reset()
{
    first_page();
}

void KovaPagingBar::setRefreshButtonHidden(bool hidden)
{
    m_refreshButton->setHidden(hidden);
}

void KovaPagingBar::setFooterInfos(const std::vector<PagingFooterInfo> &infos)
{
    for (std::size_t i = 0; i < infos.size(); ++i) {
        if (i < m_footerLabels.size()) {
            m_footerLabels[i]->setText(infos[i].text);
            if (infos[i].width != 0)
                m_footerLabels[i]->setFixedWidth(kovaPx(infos[i].width));
            continue;
        }
        m_footerLabels.push_back(makeFooterLabel(infos[i], i == 0));
        m_rightLayout->addWidget(m_footerLabels.back());
    }
    while (m_footerLabels.size() > infos.size()) {
        QLabel *label = m_footerLabels.back();
        label->hide();
        m_rightLayout->removeWidget(label);
        m_footerLabels.pop_back();
    }
}

QLabel *KovaPagingBar::makeFooterLabel(const PagingFooterInfo &info, bool first) const
{
    auto *label = new QLabel(info.text);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setFixedHeight(kovaPx(19));
    if (info.width != 0)
        label->setFixedWidth(kovaPx(info.width));
    const bool rightmost = first && m_refreshButton->isHidden();
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

void KovaPagingBar::goTo(qint64 page)
{
    setPage(int(page));
    Q_EMIT sigPageChanged();
}

void KovaPagingBar::pageClick(int index)
{
    if (index < 0 || index >= int(m_pageButtons.size()))
        return;
    const KovaButton *button = m_pageButtons.at(std::size_t(index));
    const int page = button->text().toInt();
    // A press by assistive technology clicks a moment later, when the number may be gone.
    if (page < 1 || !button->isEnabled())
        return;
    const QPointer<KovaPagingBar> guard(this);
    m_isInPageClick = true;
    goTo(page);
    if (guard)
        m_isInPageClick = false;
}

void KovaPagingBar::next_5_page()
{
    goTo(qMin(qint64(m_model->nowPage()) + jump, qint64(m_model->pageCount())));
}

void KovaPagingBar::prev_5_page()
{
    goTo(qMax(qint64(m_model->nowPage()) - jump, qint64(1)));
}

void KovaPagingBar::first_page()
{
    goTo(1);
}

void KovaPagingBar::last_page()
{
    goTo(m_model->pageCount());
}
