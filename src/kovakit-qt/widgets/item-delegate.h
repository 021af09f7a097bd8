// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QItemDelegate>
#include <QRect>
#include <QStyleOptionViewItem>

class QKeyEvent;

/**
 * Where the check indicator lies that an ItemDelegate drew last, in the viewport of its view.
 *
 * Only ItemDelegate writes it; drawing an item that has no check indicator leaves it invalid. There
 * is one for all views: read it right after the row in question was painted, for instance to tell
 * whether a click hit the check box.
 */
KOVAKIT_EXPORT extern QRect g_check_rect;

/**
 * Draws the rows of a KovaTreeWidget, 28 design pixels high each, and lets them be renamed as files
 * are.
 *
 * The field of an item that is edited in place refuses what is no file name: a dot at the
 * beginning, and the characters \ / : * ? " < > | anywhere. An empty text stays possible while
 * typing, but is not accepted. A character that is refused shows why, in a tooltip that is read out
 * as well: the string "file_name_refused". Screen readers call the field "accessible_new_name".
 * Without these strings both are in English. The field's look is the style "component.tree_item".
 *
 * The view does not own its delegate: keep it as long as the view, or give it a parent.
 */
class KOVAKIT_EXPORT ItemDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    /** A delegate without parent; install it with QAbstractItemView::setItemDelegate(). */
    ItemDelegate();

    /** As wide as the item, 28 design pixels high, in the pixels of this display. */
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const override;

    /** Puts the item's text into @p editor, a line edit, and the file-name rules upon it. */
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;

    /** Gives the item the text of @p editor, unless that is no file name. */
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;

Q_SIGNALS:
    /**
     * Escape was pressed in an open editor, which is closed after the signal.
     *
     * Emitted synchronously; @p event lives until the slots return.
     */
    void sigKeyPressed(QKeyEvent *event);

protected:
    /** Reports Escape; Return, Tab and the loss of focus end the editing as in any view. */
    bool eventFilter(QObject *object, QEvent *event) override;

    /** Draws the check indicator and notes its place in g_check_rect. */
    void drawCheck(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect,
                   Qt::CheckState state) const override;
};
