// SPDX-License-Identifier: MIT

#pragma once

#include <QVector>
#include <QWidget>

class KovaIconButton;
class QHBoxLayout;

// A bar above or below the page of a help window, hidden at first; styled by "component.help_bar",
// which knows it by its object name.
class PageBar : public QWidget
{
    Q_OBJECT

protected:
    // An empty bar; @p parent owns it.
    PageBar(const char *objectName, QWidget *parent);

    // Adds a button with the picture @p image, or @p mirrored from right to left, and with the
    // words that it does not show.
    KovaIconButton *addButton(const QString &words, const char *image, const char *mirrored);

    [[nodiscard]] QHBoxLayout *row() const { return m_row; }

    // Mirrors the pictures with the layout.
    void changeEvent(QEvent *event) override;

private:
    struct Arrow
    {
        KovaIconButton *button;
        const char *image;
        const char *mirrored;
    };
    QHBoxLayout *const m_row;
    QVector<Arrow> m_arrows;
};
