// SPDX-License-Identifier: MIT

#include "find-bar_p.h"

#include "kovakit-qt/utils/component-strings_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/kova-icon-button.h>
#include <kovakit-qt/widgets/kova-line-edit.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>

namespace {

constexpr int designSpacing = 8;
constexpr int designFieldHeight = 28;
constexpr int longestSelection = 100;
// How much is read out of a line with a match.
constexpr int longestDescription = 200;

} // namespace

FindBar::FindBar(QTextEdit *view, QWidget *parent)
    : PageBar("findBar", parent)
    , m_view(view)
    , m_field(new KovaLineEdit)
{
    const QString words = componentString("help_find", "Find in page");
    QLineEdit *field = m_field->getLineEdit();
    field->setPlaceholderText(words);
    field->setAccessibleName(words);
    field->setFixedHeight(kovaPx(designFieldHeight));
    m_field->setSpacing(designSpacing);
    m_field->getPreLabel()->hide();
    m_field->getPostLabel()->hide();
    row()->addWidget(m_field, 1);
    const KovaIconButton *previous =
        addButton(componentString("help_find_previous", "Previous match"), "bt_pagebar_back",
                  "bt_pagebar_next");
    const KovaIconButton *next = addButton(componentString("help_find_next", "Next match"),
                                           "bt_pagebar_next", "bt_pagebar_back");
    const KovaIconButton *end =
        addButton(componentString("help_find_close", "Close"), "bt_close", "bt_close");

    // Not textEdited(), since assistive technology sets the text.
    connect(field, &QLineEdit::textChanged, this, &FindBar::findTyped);
    connect(previous, &KovaIconButton::clicked, this, &FindBar::findPrevious);
    connect(next, &KovaIconButton::clicked, this, &FindBar::findNext);
    connect(end, &KovaIconButton::clicked, this, &FindBar::close);
    // Another page knows nothing of the last result; the same one, which is laid out anew when its
    // pictures come, still has no match.
    connect(view, &QTextEdit::textChanged, this, [this] {
        const bool isMissing =
            isVisible() && !wanted().isEmpty() && m_view->document()->find(wanted()).isNull();
        if (!m_match.hasSelection() && !isMissing)
            forget();
    });
}

void FindBar::open()
{
    const QString selection = m_view->textCursor().selectedText();
    const bool isWord = !selection.isEmpty() && selection.size() <= longestSelection
                     && !selection.contains(QChar::ParagraphSeparator);
    QLineEdit *field = m_field->getLineEdit();
    if (isHidden() && isWord) {
        const QSignalBlocker quiet(field);
        field->setText(selection);
    }
    show();
    field->setFocus(Qt::ShortcutFocusReason);
    field->selectAll();
}

void FindBar::close()
{
    if (m_match.hasSelection())
        m_view->setTextCursor(m_match);
    forget();
    m_view->setFocus(Qt::ShortcutFocusReason);
    hide();
}

void FindBar::forget()
{
    m_match = QTextCursor();
    m_view->setExtraSelections({});
    tell(QString(), false);
}

QString FindBar::wanted() const
{
    return m_field->getEditText();
}

void FindBar::findNext()
{
    if (wanted().isEmpty())
        open();
    else
        findFrom(m_match.isNull() ? m_view->textCursor().selectionEnd() : m_match.selectionEnd(),
                 {});
}

void FindBar::findPrevious()
{
    if (wanted().isEmpty())
        open();
    else
        findFrom(m_match.isNull() ? m_view->textCursor().selectionStart()
                                  : m_match.selectionStart(),
                 QTextDocument::FindBackward);
}

void FindBar::findTyped()
{
    findFrom(m_match.isNull() ? m_view->cursorForPosition(QPoint()).position()
                              : m_match.selectionStart(),
             {});
}

void FindBar::findFrom(int position, QTextDocument::FindFlags direction)
{
    const QTextDocument *page = m_view->document();
    m_match = page->find(wanted(), position, direction);
    if (m_match.isNull()) {
        const int end =
            direction.testFlag(QTextDocument::FindBackward) ? page->characterCount() : 0;
        m_match = page->find(wanted(), end, direction);
    }
    highlight();
    bringIntoView();
    tellResult();
}

void FindBar::highlight()
{
    QTextEdit::ExtraSelection selection;
    selection.cursor = m_match;
    const QPalette colors = m_view->palette();
    selection.format.setBackground(colors.brush(QPalette::Active, QPalette::Highlight));
    selection.format.setForeground(colors.brush(QPalette::Active, QPalette::HighlightedText));
    m_view->setExtraSelections(m_match.isNull() ? QList<QTextEdit::ExtraSelection>()
                                                : QList<QTextEdit::ExtraSelection>{selection});
}

void FindBar::bringIntoView()
{
    if (m_match.isNull())
        return;
    QTextCursor place = m_match;
    place.setPosition(m_match.selectionStart());
    const QRect line = m_view->cursorRect(place);
    const QRect seen = m_view->viewport()->rect();
    // Not at the edge, where what belongs to it would be out of sight.
    if (line.top() < seen.top() || line.bottom() > seen.bottom()) {
        QScrollBar *down = m_view->verticalScrollBar();
        down->setValue(down->value() + line.center().y() - seen.center().y());
    }
    m_view->setTextCursor(place);
}

void FindBar::tellResult()
{
    if (m_match.isNull() && !wanted().isEmpty())
        tell(componentString("help_find_none", "No matches"), true);
    else
        tell(m_match.block().text().left(longestDescription).simplified(), false);
}

void FindBar::tell(const QString &words, bool isMissing)
{
    QLabel *label = m_field->getPostLabel();
    label->setText(isMissing ? words : QString());
    label->setVisible(isMissing);
    m_field->setError(false);
    m_field->getLineEdit()->setAccessibleDescription(words);
    m_field->setError(isMissing);
}
