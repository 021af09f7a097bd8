// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QTableWidget>

#include <memory>

/**
 * A one-line bar with a button for each folder of a path.
 *
 * The bar never changes its path by itself: it tells which folder was picked with sigUpdatePath(),
 * and its owner answers with slotUpdatePath() or refresh(), at once if it likes. A row that is
 * wider than the bar is scrolled to its end, and a button over its left edge drops down a menu of
 * the folders that are out of sight. From right to left all of it is mirrored. That is decided at
 * refresh() alone, so call it once the bar has its width, and again when the width changes.
 *
 * The buttons are reached with Tab and the arrow keys and pressed with the space bar or Return; a
 * refresh keeps the keyboard focus in the bar. To screen readers the bar is a tool bar. Give it an
 * accessible name that says what its path is for.
 */
class KOVAKIT_EXPORT KovaButtonPath : public QTableWidget
{
    Q_OBJECT

public:
    /** An empty bar of the house's height; @p parent owns it. */
    explicit KovaButtonPath(QWidget *parent = nullptr);

    ~KovaButtonPath() override;

    /**
     * Shows @p path, folder names separated by "/"; empty names are left out.
     *
     * All buttons and menu entries of the path before are deleted. Takes time linear in the number
     * of folders.
     */
    void refresh(QString path);

    /** Sets the widths of the arrows and offers the menu if the row is wider than the bar was when
     *  refresh() began. refresh() ends with it. */
    void updateColumnSize();

    /**
     * Shows the button of the menu, enters the folders that a row of @p totalWidth device pixels
     * hides, and scrolls to the end of the row.
     */
    void setChangeFolderBtn(int totalWidth);

    /**
     * The path up to the button in @p column, without a slash in front, whatever the path given to
     * refresh() began with.
     *
     * Columns count arrows too: the second folder is column 2. An arrow gives a slash at the end,
     * a negative column an empty text, a column past the last one the whole path.
     */
    [[nodiscard]] QString getPath(int column) const;

public Q_SLOTS:
    /** The same as refresh(@p path). */
    void slotUpdatePath(QString path);

    /** Emits sigUpdatePath() for the folder in column @p btn_id. */
    void slotPathBarClicked(int btn_id);

Q_SIGNALS:
    /** The user picked a folder, in the row or in the menu; @p path is that of getPath(). */
    void sigUpdatePath(QString path);

protected:
    /** Brings a button that gets the focus by keyboard into view, and lets Return press it. */
    bool eventFilter(QObject *watched, QEvent *event) override;
    /** Lets the row be scrolled until its first name lies beside the button of the menu. */
    void updateGeometries() override;
    /** Tells assistive technology nothing: a cell is nothing to it, only the button inside. */
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    /** Keeps the button of the menu at the edge where the row begins. */
    void resizeEvent(QResizeEvent *event) override;
    /** Follows the layout direction with the button of the menu and the arrows. */
    void changeEvent(QEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
