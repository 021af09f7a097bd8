// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QLineEdit>

#include <memory>

class QMenu;

/**
 * A search field with a drop-down button at its left end, at its right end from right to left.
 *
 * It searches when its user asks for it with Return or Enter, not at every letter. The button and
 * the Down key open the menu of search options; Escape closes it again and leaves the user in the
 * field.
 */
class KOVAKIT_EXPORT KovaFilterBar : public QLineEdit
{
    Q_OBJECT

public:
    /** An empty field without a menu; @p parent owns it. */
    explicit KovaFilterBar(QWidget *parent = nullptr);

    ~KovaFilterBar() override;

    /**
     * Sets the menu that drops down, null for none.
     *
     * The menu stays its owner's and may be deleted at any time. Its title, whenever it gets
     * one, names the button to screen readers.
     */
    void setMenu(QMenu *menu);

public Q_SLOTS:
    /** Emits sigKeywordChanged() with the present text. */
    void slotKeywordChange();

Q_SIGNALS:
    /**
     * Return or Enter was pressed, with @p keyword in the field, which may be empty or the one
     * before. Emitted when the field has done with the key: a slot may delete the bar.
     */
    void sigKeywordChanged(QString keyword);

protected:
    /** Opens the menu on Down, which the field itself never sees. */
    void keyPressEvent(QKeyEvent *event) override;
    /** Keeps the button at its end. */
    void resizeEvent(QResizeEvent *event) override;
    /** Moves the button to the other end with the layout direction. */
    void changeEvent(QEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
