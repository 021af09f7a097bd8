// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QList>
#include <qnamespace.h>

class QWidget;

/**
 * Which widgets accessibleList() leaves out, and the least focus policy that it asks for.
 *
 * A plain value: copies are independent, and the widgets are not owned.
 */
class KOVAKIT_EXPORT AccessibleFilter
{
public:
    /** A filter that leaves nothing out: no widgets listed, focus level Qt::NoFocus. */
    AccessibleFilter() = default;

    /**
     * A filter that leaves out @p filterWidgets (though not their children) and every widget whose
     * focus policy is numerically below @p focusLevel.
     */
    AccessibleFilter(const QList<QWidget *> &filterWidgets, Qt::FocusPolicy focusLevel);

    /** Replaces the list of widgets to leave out. The widgets stay their owners'. */
    void setFilterWidgets(const QList<QWidget *> &filterWidgets);

    /** The stored list itself, so that it can be changed in place. */
    QList<QWidget *> &filterWidgets() { return m_filterWidgets; }

    /**
     * Sets the least focus policy. Policies compare as numbers: Qt::TabFocus lets click-only
     * widgets through as well, Qt::StrongFocus only strong and wheel focus.
     */
    void setFocusLevel(Qt::FocusPolicy focusLevel);

    /** The least focus policy that a widget must have to be listed. */
    [[nodiscard]] Qt::FocusPolicy focusLevel() const { return m_focusLevel; }

private:
    QList<QWidget *> m_filterWidgets;
    Qt::FocusPolicy m_focusLevel = Qt::NoFocus;
};

/**
 * The visible widgets under @p widget whose focus policy lets them take the focus, itself included,
 * without those of @p excluded. Disabled ones are listed too.
 *
 * Parents come before their children, children in the order of QObject::children(). A widget that
 * is excluded or takes no focus is passed over, its children are still visited; a widget that is
 * not visible ends the walk for its whole subtree. Null or hidden @p widget gives an empty list.
 */
[[nodiscard]] KOVAKIT_EXPORT QList<QWidget *> accessibleList(QWidget *widget,
                                                             QList<QWidget *> excluded);

/**
 * The visible widgets under @p widget that pass @p filter, in the same order as the other form.
 *
 * With a default filter every visible widget is listed, those that take no focus too.
 */
[[nodiscard]] KOVAKIT_EXPORT QList<QWidget *> accessibleList(QWidget *widget,
                                                             AccessibleFilter filter);
