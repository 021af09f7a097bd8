// SPDX-License-Identifier: MIT

#pragma once

#include <QFrame>
#include <QLabel>

#include <initializer_list>

class QVBoxLayout;

// The building blocks of the pages, so that all of them look alike. Whatever is given to a layout
// here is owned by it afterwards.

// Gives @p widget the style sheet of @p styleKey.
void setStyleKey(QWidget *widget, const char *styleKey);

// A heading inside a card.
[[nodiscard]] QLabel *makeSectionTitle(const QString &text);

// An explanation in small soft letters; wraps.
[[nodiscard]] QLabel *makeCaption(const QString &text);

// The name of a row or of a column in a table of looks; does not wrap.
[[nodiscard]] QLabel *makeRowLabel(const QString &text);

// A framed group of controls with a title and, if not empty, an explanation.
class Card : public QFrame
{
    Q_OBJECT

public:
    explicit Card(const QString &title, const QString &caption = QString());

    // Appends @p widget below the others, as wide as the card.
    void add(QWidget *widget);

    // Appends @p layout below the others.
    void add(QLayout *layout);

    // The same for what takes the height that the card has left over.
    void addGrowing(QWidget *widget);
    void addGrowing(QLayout *layout);

    // Appends @p widgets in a row, left-aligned, each as wide as it wants to be.
    void addRow(std::initializer_list<QWidget *> widgets);

    // Appends @p widget with an explanation to its right; @p widget gets @p width design pixels,
    // so that the explanations of several rows line up.
    void addExplained(QWidget *widget, const QString &explanation, int width);

private:
    QVBoxLayout *m_column;
};
