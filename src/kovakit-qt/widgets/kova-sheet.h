// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QFrame>

#include <cstddef>
#include <memory>
#include <new>

class QPainter;

/**
 * The frame of every sheet: a white body with a drop shadow, painted from eight pictures.
 *
 * A panel inside a window instead of a window of its own; put it over the window with
 * KovaMask::createMask(). This class is no more than the frame: it is not modal, takes no keys and
 * emits nothing by itself. The mask over the window takes the clicks beside it, but the keyboard
 * still reaches what lies below. What is modal are KovaMessageSheet and KovaInputSheet; for the
 * usual messages call the functions of kova-msg-box.h. Derive from this class, or give it a
 * widget, only for panels of your own content that need no answer.
 *
 * Assistive technology sees a sheet as a dialog; its name is the accessible name, or the text of
 * its first message label when none is set. Its description is the accessible description, or the
 * accessible names of its pictures and the texts of its other message labels.
 */
class KOVAKIT_EXPORT KovaSheet : public QFrame
{
    Q_OBJECT

public:
    /** A sheet without content; @p parent owns it. */
    explicit KovaSheet(QWidget *parent);

    ~KovaSheet() override;

    /**
     * Shows @p widget in the middle of the sheet, which takes it over.
     *
     * The layout that the sheet had is deleted; widgets that it held stay children of the sheet.
     */
    void setWidget(QWidget *widget);

    /** Remembers that the sheet is on the heap, see isOnHeap(). Throws when memory is out. */
    static void *operator new(std::size_t size);
    /** The same, but returns null when memory is out. */
    static void *operator new(std::size_t size, const std::nothrow_t &tag) noexcept;
    /** The same as the first, for a derived class of a stricter alignment than new's own. */
    static void *operator new(std::size_t size, std::align_val_t alignment);
    /** Makes a sheet in memory of the caller's: a shared pointer's block, for instance. */
    static void *operator new(std::size_t size, void *place) noexcept;
    /** Frees a sheet from the heap. */
    static void operator delete(void *memory) noexcept;
    /** Frees the memory of a sheet whose constructor threw. */
    static void operator delete(void *memory, const std::nothrow_t &tag) noexcept;
    /** Frees a sheet that was allocated with an alignment. */
    static void operator delete(void *memory, std::align_val_t alignment) noexcept;
    /** Does nothing: the memory is the caller's. */
    static void operator delete(void *memory, void *place) noexcept;

    /**
     * Whether the sheet was made with a new of its own, and may be deleted by its parent at any
     * time.
     *
     * False for a local variable, a member, and a sheet in memory of somebody else's, who destroys
     * it: QSharedPointer::create(), std::make_shared(). Such a sheet leaves its parent when that is
     * destroyed while the sheet is being executed, so that it is not deleted twice; otherwise it
     * has to go before its parent, as any such widget.
     */
    [[nodiscard]] bool isOnHeap() const;

Q_SIGNALS:
    /**
     * The sheet was ended with the code @p ret and is hidden. The sheets that can be ended emit it;
     * this class never does.
     */
    void finished(int ret);

protected:
    /** Gives the shadow its room again, whatever a style did to the margins. */
    void showEvent(QShowEvent *event) override;
    /** Paints the shadow and the body. */
    void paintEvent(QPaintEvent *event) override;

    /** Paints the shadow band along the four sides; a picture that is missing leaves a gap. */
    void drawShadow(QPainter &painter);

private:
    class Private;
    std::unique_ptr<Private> const d;
};
