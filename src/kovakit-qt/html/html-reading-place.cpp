// SPDX-License-Identifier: MIT

#include "html-reading-place_p.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>

#include <algorithm>

namespace {

bool hasText(const QTextBlock &block, const QTextLine &line)
{
    const QString text = block.text().mid(line.textStart(), line.textLength());
    return std::any_of(text.cbegin(), text.cend(), [](QChar letter) {
        return letter != QChar::ObjectReplacementCharacter && !letter.isSpace();
    });
}

qreal topOf(const QTextBlock &block)
{
    return block.document()->documentLayout()->blockBoundingRect(block).top();
}

// The position of the first line of text, from the block @p from on, that begins inside @p view;
// -1 if there is none.
int firstTextInView(const QTextBlock &from, const QRectF &view)
{
    for (QTextBlock block = from; block.isValid(); block = block.next()) {
        const qreal blockTop = topOf(block);
        for (int i = 0; i < block.layout()->lineCount(); ++i) {
            const QTextLine line = block.layout()->lineAt(i);
            const qreal top = blockTop + line.y();
            if (top > view.bottom())
                return -1;
            if (top >= view.top() && hasText(block, line))
                return block.position() + line.textStart();
        }
    }
    return -1;
}

} // namespace

HtmlReadingPlace::HtmlReadingPlace(const QTextDocument *document, const QRectF &view)
    : m_document(document)
{
    const int atTop = qMax(0, document->documentLayout()->hitTest(view.topLeft(), Qt::FuzzyHit));
    m_position = firstTextInView(document->findBlock(atTop), view);
    if (m_position < 0)
        m_position = atTop;
    m_height = height();
}

qreal HtmlReadingPlace::shift() const
{
    return height() - m_height;
}

// A picture in the middle of a line lifts the line's upper edge, but not what is written in it.
qreal HtmlReadingPlace::height() const
{
    const QTextBlock block = m_document->findBlock(m_position);
    const QTextLine line = block.layout()->lineForTextPosition(m_position - block.position());
    if (!line.isValid())
        return topOf(block);
    return topOf(block) + line.y() + (hasText(block, line) ? line.ascent() : 0);
}
