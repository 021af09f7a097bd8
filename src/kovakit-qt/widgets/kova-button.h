// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QPushButton>

/**
 * A push button with one of the house's looks.
 *
 * The look is chosen once, by the type given to the constructor; the button keeps the size that
 * its text asks for. The host must have loaded its style files. For a button that shows a picture
 * alone use KovaIconButton.
 */
class KOVAKIT_EXPORT KovaButton : public QPushButton
{
    Q_OBJECT

public:
    /** The looks, with the style key of each. Callers may pass the numbers. */
    enum Type : int {
        Apply = 0, ///< The one main action; "component.apply_button".
        Cancel = 1, ///< The way out; "component.cancel_button".
        SelectedPage = 2, ///< The current page of a paging bar; "component.select_paging_button".
        OtherPage = 3, ///< Any other page; "component.nonselect_paging_button".
        Standard = 4, ///< Any other action; "component.default_button".
        Red = 5, ///< An action that destroys something; "component.red_button".
    };

    /**
     * A button that shows @p text in the look @p type.
     *
     * It is created without a parent; the layout that it is added to gives it one. A @p type that
     * is none of the six keeps the application's look.
     */
    KovaButton(const QString &text, int type);
};
