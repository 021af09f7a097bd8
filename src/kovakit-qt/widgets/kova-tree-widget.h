// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>
#include <kovakit-qt/widgets/file-system-tree-widget-item.h>
#include <kovakit-qt/widgets/item-delegate.h>

#include <QColor>
#include <QTreeWidget>

#include <memory>

/**
 * A tree, made for folders, with a rounded highlight behind the selected rows and the row under the
 * pointer.
 *
 * It comes without delegate, style sheet and colours. A host usually sets an ItemDelegate, fills
 * the tree with FileSystemTreeWidgetItem, hides the header, and sets a style sheet whose own
 * selection background is transparent, since that is painted over the highlight:
 *
 *     auto *tree = new KovaTreeWidget(this);
 *     auto *delegate = new ItemDelegate;
 *     delegate->setParent(tree);
 *     tree->setItemDelegate(delegate);
 *     tree->setHeaderHidden(true);
 *     tree->setBackgroundColor(QColor(0xD6, 0xE8, 0xF6), QColor(0xE3, 0xE9, 0xEF));
 *
 * Which row is under the pointer is worked out for a tree with a hidden header; a header that shows
 * moves the hover highlight down by its height. Rows whose items lack Qt::ItemIsUserCheckable are
 * drawn in the disabled look, though they can be used like all others.
 *
 * Assistive technology can tick, unfold, choose and focus each row. It can ask for a menu if
 * something is connected to sigMouseRightClickEvent(), or the context menu policy has one. The tree
 * then gets what the Menu key gives it: the key press, and a QContextMenuEvent unless a menu has
 * come up. Give the tree an accessible name.
 */
class KOVAKIT_EXPORT KovaTreeWidget : public QTreeWidget
{
    Q_OBJECT
    /** The colour of the ring round the current row of a tree with the focus; invalid: none. */
    Q_PROPERTY(QColor focusColor READ focusColor WRITE setFocusColor)

public:
    /** An empty tree, with a header, as QTreeWidget makes it. */
    explicit KovaTreeWidget(QWidget *parent = nullptr);
    ~KovaTreeWidget() override;

    /**
     * Sets the colours behind selected rows and behind the row under the pointer.
     *
     * Without them, or with invalid colours, the highlight is black inside its white outline.
     */
    void setBackgroundColor(QColor selected, QColor hover);

    /** The colour of the ring round the current row of a tree with the focus; invalid for none. */
    [[nodiscard]] QColor focusColor() const;

    /**
     * Sets the colour of the ring round the current row, which is shown while the tree has the
     * keyboard focus. Invalid, as at first, for no ring.
     *
     * A style sheet sets it with "qproperty-focusColor"; the style "theme.tree" of the house does.
     */
    void setFocusColor(const QColor &color);

    /**
     * Scrolls sideways until the beginning of @p item is in the middle of the viewport, unless it
     * is in sight already with at least 100 design pixels after it. Null does nothing.
     */
    void updateScrollArea(QTreeWidgetItem *item);

Q_SIGNALS:
    /**
     * The right mouse button was pressed on the viewport, before the row under it gets selected.
     *
     * Emitted synchronously with positions in the viewport; @p event lives until the slots return.
     * A slot may delete the tree, which then handles the press no further.
     * To open a menu use QMenu::popup(), so that the row is selected while the menu is open.
     */
    void sigMouseRightClickEvent(QMouseEvent *event);

    /**
     * A key was pressed, whatever it is, before the tree handles it.
     *
     * Emitted synchronously; @p event lives until the slots return. A slot may delete the tree.
     */
    void sigKeyPressEvent(QKeyEvent *event);

protected:
    /** Reports every key, then handles it as any tree does. */
    void keyPressEvent(QKeyEvent *event) override;
    /** Reports presses of the right button, then handles every press as any tree does. */
    void mousePressEvent(QMouseEvent *event) override;
    /** Announces the current item anew, or makes the top visible row current if there is none. */
    void focusInEvent(QFocusEvent *event) override;
    /** Lets the style sheet look at the direction of the layout anew. */
    void changeEvent(QEvent *event) override;
    /** Keeps the highlight under the pointer. */
    bool viewportEvent(QEvent *event) override;
    /** Keeps the highlight under the pointer, over which the rows move away. */
    void scrollContentsBy(int dx, int dy) override;
    /** Keeps the highlight as wide as the row, which may be wider than its columns. */
    void selectionChanged(const QItemSelection &selected,
                          const QItemSelection &deselected) override;
    /** Moves the ring round the current row, which may be wider than its columns. */
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    /** Asks for the pointer once for all rows. */
    void paintEvent(QPaintEvent *event) override;
    /** Draws the arrows of a row from all the pixels of the device. */
    void drawBranches(QPainter *painter, const QRect &rect,
                      const QModelIndex &index) const override;
    /** Draws the highlight of the row, the row, and the ring if it is the current one. */
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                 const QModelIndex &index) const override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
