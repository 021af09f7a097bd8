// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QColor>
#include <QFrame>

class KovaMaskPrivate;

/**
 * A translucent layer that dims a whole window and holds one widget, usually a sheet, in its
 * middle.
 *
 * The mask shows and hides with its content and follows the size of the window. It swallows
 * nothing by itself: what keeps the window under it from being used is the sheet.
 *
 * A mask whose content is gone stays in its window, hidden and empty, until that goes; each one
 * holds about 3 KB. A window that lives long and asks often has its masks made with
 * #DeleteWhenEmpty.
 */
class KOVAKIT_EXPORT KovaMask : public QFrame
{
    Q_OBJECT

public:
    /** What becomes of a mask whose content was deleted or moved elsewhere. */
    enum DeletionPolicy : int {
        KeepWhenEmpty = 0, ///< It stays, hidden, until its parent goes.
        DeleteWhenEmpty = 1, ///< It is deleted as soon as the event loop is reached.
    };

    /** The colour in which the functions of kova-msg-box.h dim a window: black at 8 percent. */
    static constexpr QColor dimColor{0, 0, 0, 20};

    /**
     * Puts @p widget into a new mask over @p parent, filled with @p color, and returns @p widget.
     *
     * Without a @p parent the present parent of @p widget is taken, or that of the mask that holds
     * it. Returns null and does nothing when there is no @p widget or no parent to be had. The mask
     * belongs to the parent; the content belongs to the mask and is hidden until it is shown. A
     * content that was in another mask leaves that one. The new mask has the policy #KeepWhenEmpty.
     */
    static QWidget *createMask(QWidget *widget, QWidget *parent, QColor color);

    /** The same, with a new mask that has the policy @p policy. */
    static QWidget *createMask(QWidget *widget, QWidget *parent, QColor color,
                               DeletionPolicy policy);

    /** A mask over @p parent, which owns it. Hidden until @p widget, which it takes over, is shown.
     */
    KovaMask(QWidget *widget, QWidget *parent, QColor color);

    ~KovaMask() override;

    /** What becomes of the mask when its content is gone, at first #KeepWhenEmpty. */
    [[nodiscard]] DeletionPolicy deletionPolicy() const;

    /** Sets that. #DeleteWhenEmpty also deletes a mask that has lost its content before. */
    void setDeletionPolicy(DeletionPolicy policy);

    /** Takes the size of the window anew, in device pixels. Hides QWidget::resize() on purpose. */
    void resize();

protected:
    /** Shows and hides the mask with its content; lets every event through. */
    bool eventFilter(QObject *watched, QEvent *event) override;
    /** Hides the mask when its content leaves it or is deleted, and has it deleted by its policy.
     */
    void childEvent(QChildEvent *event) override;

private:
    KovaMaskPrivate *const d;
};
