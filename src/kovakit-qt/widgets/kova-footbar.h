// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QWidget>

#include <memory>

/**
 * The strip at the foot of a window or page: one group of widgets at the left, one at the right.
 *
 * Push the widgets first, then call init() once; nothing is shown before.
 */
class KOVAKIT_EXPORT KovaFootbar : public QWidget
{
public:
    /** An empty strip; @p parent owns it. */
    explicit KovaFootbar(QWidget *parent = nullptr);

    ~KovaFootbar() override;

    /**
     * Appends @p w to the left group. Until init() takes it over it stays its owner's; deleted
     * before that it is left out.
     */
    void pushLeftWidget(QWidget *w);

    /** Appends @p w to the right group, on the terms of pushLeftWidget(). */
    void pushRightWidget(QWidget *w);

    /**
     * Lays out what was pushed, with the house's margins and spacing, and takes ownership of it.
     *
     * To be called exactly once: a widget pushed later never appears, and a second call lays out
     * everything again.
     */
    void init();

    /** Sets the margins around the row, in design pixels. init() sets its own. */
    void setMargins(int left, int top, int right, int bottom);

    /** Sets the distance between neighbours, in design pixels. init() sets its own. */
    void setSpacing(int spacing);

private:
    class Private;
    std::unique_ptr<Private> const d;
};
