// SPDX-License-Identifier: MIT

#pragma once

#include <QTextDocument>

// The line of a page that its reader reads: the first one of text that is wholly in view. A new
// layout moves it when something above it has changed its size.
class HtmlReadingPlace
{
public:
    // The place in the part @p view of @p document, which must outlive it.
    HtmlReadingPlace(const QTextDocument *document, const QRectF &view);

    // How far the line has moved down since the place was taken.
    [[nodiscard]] qreal shift() const;

private:
    [[nodiscard]] qreal height() const;

    const QTextDocument *m_document;
    int m_position;
    qreal m_height;
};
