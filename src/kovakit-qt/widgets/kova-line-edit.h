// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QWidget>

#include <memory>

class QLabel;
class QLineEdit;

/**
 * A text field with a label before it and one after it, a test for its text and an error look.
 *
 * For the rows of settings forms: a caption, the field, a unit. The labels are empty at first and
 * are filled through their accessors. The first one with a text names the field to screen readers,
 * unless the field has an accessible name of its own. The focus of the whole goes to the field.
 *
 * An ampersand before a letter or digit marks a shortcut into the field: "&Name", "E&xit". It does
 * not between two characters of a word if a capital or a digit follows ("R&D"), nor before anything
 * else ("Name & address"). The first single ampersand of a plain text decides: if it marks a
 * shortcut, the label becomes a buddy of the field, and its other ampersands have to be doubled; if
 * not, the whole text is shown as it is. A text whose ampersands are all doubled shows them single.
 *
 * The error look is the dynamic property "error" of the field, which the style text of
 * "component.lineedit" selects on.
 */
class KOVAKIT_EXPORT KovaLineEdit : public QWidget
{
    Q_OBJECT

public:
    /** An empty row without margins and spacing; @p parent owns it. */
    explicit KovaLineEdit(QWidget *parent = nullptr);

    ~KovaLineEdit() override;

    /** Sets the margins around the row, in design pixels. */
    void setMargins(int left, int top, int right, int bottom);

    /** Sets the distance between the labels and the field, in design pixels. */
    void setSpacing(int spacing);

    /** Sets the function that tells whether a text is valid; null removes it. Tests nothing yet. */
    void setValidator(bool (*validator)(const QString &));

    /**
     * Whether the field's text is valid; any text is while there is no validator.
     *
     * The look stays as it is: what to show is the caller's decision, with setError().
     */
    [[nodiscard]] bool validate() const;

    /**
     * Shows the field as wrong, or as right again, without words that say what is wrong.
     *
     * Screen readers get a warning sign in front of the field's accessible description. A
     * description that is set while an error shows replaces the sign; call this again after it.
     */
    void setError(bool error);

    /**
     * Shows the field as wrong with the plain text @p reason under it, or as right again if that
     * is empty.
     *
     * The row grows by the lines that the text takes over the width from the field to its end.
     * Screen readers read the text out when it comes, and find it after the warning sign in the
     * field's accessible description, in front of what the owner described there.
     */
    void setError(const QString &reason);

    /** The same for @p reason in UTF-8, which would otherwise count as true. */
    void setError(const char *reason);

    /** The label before the field, owned by this widget. */
    [[nodiscard]] QLabel *getPreLabel() const;

    /** The label after the field, owned by this widget. */
    [[nodiscard]] QLabel *getPostLabel() const;

    /** The field itself, owned by this widget. */
    [[nodiscard]] QLineEdit *getLineEdit() const;

    /** The text of the field. */
    [[nodiscard]] QString getEditText() const;

protected:
    /** Reads the labels anew, once the new text of one has to be laid out, and places the error. */
    bool event(QEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
