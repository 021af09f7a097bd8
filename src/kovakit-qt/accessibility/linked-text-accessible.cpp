// SPDX-License-Identifier: MIT

#include "linked-text-accessible_p.h"

#include "kovakit-qt/utils/markup_p.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleInterface>
#include <QDesktopServices>
#include <QLabel>
#include <QMetaObject>
#include <QTextBlock>
#include <QTextDocument>
#include <QUrl>

#include <utility>

class LinkedTextAccessible::Link : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    Link(const LinkedTextAccessible *text, QString words, QString target)
        : m_text(text)
        , m_words(std::move(words))
        , m_target(std::move(target))
    {
    }

    bool isValid() const override { return m_text->isValid(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_text->window(); }
    QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_text->object());
    }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QRect rect() const override { return m_text->rect(); }
    QAccessible::Role role() const override { return QAccessible::Link; }
    void setText(QAccessible::Text, const QString &) override { }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? m_words : QString();
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invisible = m_text->state().invisible;
        state.disabled = m_text->state().disabled;
        state.linked = true;
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface
                 ? static_cast<QAccessibleActionInterface *>(this)
                 : nullptr;
    }

    QStringList actionNames() const override
    {
        const QLabel *label = m_text->label();
        const bool isUsable = label->isEnabled()
                           && label->textInteractionFlags()
                                  & (Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
        return isUsable ? QStringList(pressAction()) : QStringList();
    }

    // What a link opens may delete the label, and with it this.
    void doAction(const QString &name) override
    {
        if (!actionNames().contains(name))
            return;
        QLabel *label = m_text->label();
        const auto follow = [label, target = m_target] {
            if (label->openExternalLinks())
                QDesktopServices::openUrl(QUrl(target));
            else
                Q_EMIT label->linkActivated(target);
        };
        QMetaObject::invokeMethod(label, follow, Qt::QueuedConnection);
    }

    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    const LinkedTextAccessible *const m_text;
    const QString m_words;
    const QString m_target;
};

LinkedTextAccessible::LinkedTextAccessible(QLabel *label)
    : NamedAccessible(label, QAccessible::StaticText)
{
}

LinkedTextAccessible::~LinkedTextAccessible()
{
    dropLinks();
}

QLabel *LinkedTextAccessible::label() const
{
    return static_cast<QLabel *>(widget());
}

bool LinkedTextAccessible::isMarkup() const
{
    return label()->textFormat() != Qt::PlainText && Qt::mightBeRichText(label()->text());
}

QString LinkedTextAccessible::shownName() const
{
    return isMarkup() ? withoutMarkup(label()->text()) : label()->text();
}

QAccessible::State LinkedTextAccessible::state() const
{
    QAccessible::State state = NamedAccessible::state();
    state.readOnly = true;
    return state;
}

void LinkedTextAccessible::dropLinks() const
{
    for (const QAccessible::Id link : std::exchange(m_links, {}))
        QAccessible::deleteAccessibleInterface(link);
}

void LinkedTextAccessible::findLinks() const
{
    const QString text = label()->text();
    if (text == m_text)
        return;
    m_text = text;
    dropLinks();
    if (!isMarkup())
        return;
    QTextDocument document;
    document.setHtml(text);
    QString words;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            if (format.anchorHref().isEmpty())
                continue;
            words += it.fragment().text();
            // One link is several fragments where its words look different.
            auto following = it;
            if (!(++following).atEnd()
                && following.fragment().charFormat().anchorHref() == format.anchorHref())
                continue;
            auto *link = new Link(this, std::exchange(words, {}), format.anchorHref());
            m_links.append(QAccessible::registerAccessibleInterface(link));
        }
    }
}

int LinkedTextAccessible::childCount() const
{
    findLinks();
    return m_links.size();
}

QAccessibleInterface *LinkedTextAccessible::child(int index) const
{
    return index >= 0 && index < childCount() ? QAccessible::accessibleInterface(m_links.at(index))
                                              : nullptr;
}

int LinkedTextAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    return m_links.indexOf(QAccessible::uniqueId(const_cast<QAccessibleInterface *>(child)));
}
