// SPDX-License-Identifier: MIT

#pragma once

#include "named-accessible_p.h"

#include "kovakit-qt/utils/markup_p.h"

#include <QWidget>

// Reports a Link, a label with the signal clicked(), to assistive technology as a link that can be
// pressed, with the words of its text as name.
template<class Link>
class LinkAccessible : public NamedAccessible
{
public:
    explicit LinkAccessible(Link *link)
        : NamedAccessible(link, QAccessible::Link)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.linked = true;
        return state;
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (widget()->isEnabled())
            names.prepend(pressAction());
        return names;
    }

    void doAction(const QString &name) override
    {
        if (name != pressAction())
            QAccessibleWidget::doAction(name);
        else if (widget()->isEnabled())
            Q_EMIT link()->clicked();
    }

protected:
    QString shownName() const override { return withoutMarkup(link()->text()); }

private:
    Link *link() const { return static_cast<Link *>(widget()); }
};

// Makes every Link report itself in this way. For its constructor.
template<class Link>
void installLinkAccessibility()
{
    QAccessible::installFactory(createAccessible<Link, LinkAccessible<Link>>);
}
