// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QComboBox>

/**
 * A combo box in the house look, its list and the list's scroll bar included.
 *
 * The wheel changes a box that has the focus. Over any other box it goes to the page around it, so
 * that scrolling a page of settings changes none of them.
 *
 * Its style is that of the keys "component.combobox", a text with a place for the padding ("%1")
 * and one for the border ("%2"), and "component.scrollbar".
 */
class KOVAKIT_EXPORT KovaComboBox : public QComboBox
{
    Q_OBJECT

public:
    /** An empty box; @p parent owns it. */
    explicit KovaComboBox(QWidget *parent = nullptr);

protected:
    /** Has an item chosen, with activated(), that assistive technology selects in the list. */
    void showEvent(QShowEvent *event) override;
    /** Draws the box, its arrow from all the pixels of the device, its placeholder weaker than an
     *  entry. */
    void paintEvent(QPaintEvent *event) override;
    /** Sees to the placeholder of the field that makes a box editable. */
    void childEvent(QChildEvent *event) override;
};
