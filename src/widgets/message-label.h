#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QLabel>

/**
 * A label whose height is always what its word-wrapped text needs at its present width.
 *
 * For the texts of sheets, whose width is given. The label fixes its height at every resize; use a
 * KovaLabel where the label may also be higher than its text.
 */
class KOVAKIT_EXPORT MessageLabel : public QLabel
{
    Q_OBJECT

public:
    /** An empty label; @p parent owns it. */
    explicit MessageLabel(QWidget *parent = nullptr);

    /**
     * Fixes the height for the present text and width. The label does so itself when it is resized;
     * call it after a new text. A label that does not wrap keeps its height.
     */
    void fitHeight();

protected:
    /** Fixes the height for the new width. */
    void resizeEvent(QResizeEvent *event) override;
};
