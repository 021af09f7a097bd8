// SPDX-License-Identifier: MIT

#include "page-notice_p.h"

#include "kovakit-qt/accessibility/named-accessible_p.h"
#include "kovakit-qt/style/optional-style_p.h"
#include "kovakit-qt/utils/component-strings_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/kova-button.h>

#include <QBoxLayout>
#include <QLabel>

namespace {

constexpr int designMargin = 12;

// Screen readers read an alert out when it appears.
class NoticeAccessible : public NamedAccessible
{
public:
    explicit NoticeAccessible(QWidget *notice)
        : NamedAccessible(notice, QAccessible::AlertMessage)
    {
    }

protected:
    QString shownName() const override
    {
        const QWidget *notice = widget();
        return notice->findChild<QLabel *>()->text();
    }
};

} // namespace

PageNotice::PageNotice(QWidget *parent)
    : QWidget(parent)
    , m_layout(new QBoxLayout(QBoxLayout::TopToBottom, this))
    , m_label(new QLabel(this))
    , m_retry(new KovaButton(componentString("help_try_again", "Try again"), KovaButton::Standard))
{
    QAccessible::installFactory(createAccessible<PageNotice, NoticeAccessible>);
    hide();
    setObjectName(QStringLiteral("pageNotice"));
    setStyleSheet(optionalStyleSheet("component.help_notice"));
    const int margin = kovaPx(designMargin);
    m_layout->setContentsMargins(margin, margin, margin, margin);
    m_layout->setSpacing(margin);
    m_label->setWordWrap(true);
    m_layout->addStretch(1);
    m_layout->addWidget(m_label);
    m_layout->addWidget(m_retry, 0, Qt::AlignCenter);
    m_layout->addStretch(1);
    connect(m_retry, &KovaButton::clicked, this, &PageNotice::retried);
}

void PageNotice::say(const QString &words, bool canRetry)
{
    const bool isNew = words != m_label->text();
    m_label->setText(words);
    m_retry->setVisible(canRetry);
    if (!isNew)
        return;
    QAccessibleEvent event(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

void PageNotice::setStrip(bool strip)
{
    m_layout->setDirection(strip ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_layout->setStretch(0, strip ? 0 : 1);
    m_layout->setStretch(1, strip ? 1 : 0);
    m_layout->setStretch(3, strip ? 0 : 1);
    m_label->setAlignment(strip ? Qt::AlignVCenter | Qt::AlignLeading : Qt::AlignCenter);
}

void PageNotice::focusRetry()
{
    m_retry->setFocus();
}
