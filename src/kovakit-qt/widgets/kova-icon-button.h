// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QToolButton>

#include <memory>

/**
 * A button that shows a picture alone and changes it with the pointer and the enabled state.
 *
 * Pictures are given at the device's resolution; the icon is shown at their size divided by the
 * device pixel ratio. A menu set with setMenu() opens at the first press. A picture says nothing
 * to a screen reader, so give each button an accessible name, and a tooltip to those who see it.
 */
class KOVAKIT_EXPORT KovaIconButton : public QToolButton
{
    Q_OBJECT

public:
    /** A button without parent that shows @p pixmap in every state. */
    explicit KovaIconButton(const QPixmap &pixmap);

    /**
     * A button without parent that shows the four pictures of @p imageName of the ImageManager.
     *
     * A state whose picture is missing there shows the default one, and a name that is not known
     * shows nothing; either way with a warning for each state.
     */
    explicit KovaIconButton(const QString &imageName);

    ~KovaIconButton() override;

    /** Shows @p pixmap at once and in every state, also in those that had a picture of their own.
     */
    void setDefaultIcon(const QPixmap &pixmap);

    /** Shows @p pixmap while a mouse button is held; takes effect at the next press. */
    void setPressIcon(const QPixmap &pixmap);

    /** Shows @p pixmap under the pointer; takes effect when the pointer next enters. */
    void setHoverIcon(const QPixmap &pixmap);

    /** Shows @p pixmap while disabled; takes effect at the next change of the enabled state. */
    void setDisableIcon(const QPixmap &pixmap);

    /**
     * Takes the pictures of all four states from @p imageName of the ImageManager.
     *
     * What is missing there shows as the constructor says.
     */
    void setAllIcon(const QString &imageName);

    /**
     * Gives the button the look that the constructors give it: the icon alone, a fixed size, the
     * style key "component.icon_button", and a menu that opens at the first press.
     *
     * Takes back what was set instead of these; icons stay.
     */
    void initialize();

protected:
    /**
     * A button that shows the four pictures of @p imageName and has the style text @p style in
     * place of that of "component.icon_button"; @p parent owns it.
     *
     * For subclasses with a look of their own: Qt would have to work out a style text that they set
     * afterwards as well as the first one.
     */
    KovaIconButton(const QString &imageName, const QString &style, QWidget *parent);

    /** Draws the icon from all the pixels of the device. */
    void paintEvent(QPaintEvent *event) override;
    /** Shows the hover picture if enabled. */
    void enterEvent(QEvent *event) override;
    /** Shows the default picture if enabled; a button with the keyboard focus stays as it is. */
    void leaveEvent(QEvent *event) override;
    /** Shows the press picture if enabled, whichever mouse button it is. */
    void mousePressEvent(QMouseEvent *event) override;
    /** Shows the default picture if enabled, although the pointer may still be inside. */
    void mouseReleaseEvent(QMouseEvent *event) override;
    /** Follows the enabled state with the disable or the default picture. */
    void changeEvent(QEvent *event) override;
    /** Shows the picture of the enabled state. */
    void showEvent(QShowEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
