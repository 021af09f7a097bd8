#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QFrame>

#include <cstddef>

class QPainter;

/**
 * The frame of every sheet: a white body with a drop shadow, painted from eight pictures.
 *
 * A sheet is a modal panel inside a window instead of a dialog of its own. Put it over a window
 * with KovaMask::createMask(). For a message or a question use KovaMessageSheet or the one-call
 * functions of kova-msg-box.h; derive from this class only for panels of your own content.
 *
 * Assistive technology sees a sheet as a dialog; its name is the accessible name, or the text of
 * its first message label when none is set.
 */
class KOVAKIT_EXPORT KovaSheet : public QFrame
{
    Q_OBJECT

public:
    /** A sheet without content; @p parent owns it. */
    explicit KovaSheet(QWidget *parent);

    /**
     * Shows @p widget in the middle of the sheet, which takes it over.
     *
     * The layout that the sheet had is deleted; widgets that it held stay children of the sheet.
     */
    void setWidget(QWidget *widget);

    /** Remembers that the sheet is on the heap, see isOnHeap(). */
    static void *operator new(std::size_t size);
    /** Frees a sheet from the heap. */
    static void operator delete(void *memory);

    /**
     * Whether the sheet was made with new, and may be deleted by its parent at any time.
     *
     * A sheet that is a local variable or a member leaves its parent when that is destroyed while
     * the sheet is being executed, so that it is not deleted twice.
     */
    [[nodiscard]] bool isOnHeap() const { return m_onHeap; }

Q_SIGNALS:
    /** The sheet was ended with the code @p ret and is hidden. */
    void finished(int ret);

protected:
    /** Gives the shadow its room again, whatever a style did to the margins. */
    void showEvent(QShowEvent *event) override;
    /** Paints the shadow and the body. */
    void paintEvent(QPaintEvent *event) override;

    /**
     * Fixes the width at @p width device pixels, shadow included, and makes the sheet as high as
     * its layout, with the message labels in it, needs at that width.
     *
     * The sheet must have a layout.
     */
    void fitToWidth(int width);

    /** Paints the shadow band along the four sides; a picture that is missing leaves a gap. */
    void drawShadow(QPainter &painter);

private:
    // A style that is applied to the sheet takes the margins away.
    void restoreShadowMargins();

    int shadowMargin;
    bool m_onHeap;
};
