// SPDX-License-Identifier: MIT

#pragma once

#include <QScrollArea>
#include <QVector>

// Shows the texts of a sheet where they are higher than the room for them, or a word is wider.
class SheetTextArea : public QScrollArea
{
public:
    // Not shown yet; @p sheet owns it.
    explicit SheetTextArea(QWidget *sheet);

    // Takes the labels over and shows them one below the other.
    void setLabels(const QVector<QWidget *> &labels, int spacing);
    // Leaves the labels to others.
    void clearLabels();

    // The bars are there or not whatever the texts need: they cannot come and go while the texts
    // are laid out for the width that they leave. The texts are never narrower than @p widestWord.
    void setBars(bool vertical, bool horizontal, int widestWord);

    // What a bar takes away from the room.
    [[nodiscard]] int barExtent() const;

    // Scrolls if @p event is one of the keys for that, and tells whether it was.
    bool scrollBy(QKeyEvent *event);

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void placeLabels();

    QVector<QWidget *> m_labels;
    int m_spacing = 0;
    int m_widestWord = 0;
};
