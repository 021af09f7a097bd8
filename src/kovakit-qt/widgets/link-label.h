// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QLabel>

#include <memory>

/**
 * A label that looks and behaves like a link but opens nothing by itself.
 *
 * Under the pointer it is underlined and the application shows the hand cursor. The label can keep
 * the target for its owner, who reads it when clicked() arrives. It has no style of its own; it
 * takes the keyboard focus and reports itself to screen readers as a link that can be pressed.
 */
class KOVAKIT_EXPORT LinkLabel : public QLabel
{
    Q_OBJECT

public:
    /** A link that shows @p text, with an empty target; @p parent owns it. */
    explicit LinkLabel(const QString &text, QLabel *parent = nullptr);

    /** Takes the hand cursor away, if it is this label's. */
    ~LinkLabel() override;

    /** Stores the target. It is never opened. */
    void setHyperLink(const QString &link);

    /** The stored target. */
    [[nodiscard]] QString getHyperLink() const;

Q_SIGNALS:
    /**
     * The link was pressed: at once when any mouse button goes down on it, or with Return, Enter
     * or the space bar while it has the focus. Never while the label is disabled.
     */
    void clicked();

protected:
    /** Emits clicked(), before anything else is done with the press. */
    void mousePressEvent(QMouseEvent *event) override;
    /** Emits clicked() for Return, Enter and the space bar. */
    void keyPressEvent(QKeyEvent *event) override;
    /** Shows hand and underline, if enabled. */
    void enterEvent(QEvent *event) override;
    /**
     * Takes hand and underline away, if enabled. A label that was disabled under the pointer
     * leaves both where they are; the hand is then the application's to remove.
     */
    void leaveEvent(QEvent *event) override;
    /** Takes hand and underline away; a hidden label sees no pointer leave. */
    void hideEvent(QHideEvent *event) override;
    /** Shows hand and underline if the label is enabled under the pointer. */
    void changeEvent(QEvent *event) override;
    /** Draws the text and, after a move by keyboard, the frame of the focus. */
    void paintEvent(QPaintEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
