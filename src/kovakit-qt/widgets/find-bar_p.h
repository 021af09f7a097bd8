// SPDX-License-Identifier: MIT

#pragma once

#include "page-bar_p.h"

#include <QTextCursor>
#include <QTextDocument>

class KovaLineEdit;
class QTextEdit;

// Finds words in the text of a view and highlights the match.
class FindBar : public PageBar
{
    Q_OBJECT

public:
    // A bar for @p view; @p parent owns it.
    FindBar(QTextEdit *view, QWidget *parent);

    // Shows the bar and takes the keyboard, with what is selected in the view to look for.
    void open();

    // Hides the bar and gives the keyboard back to the view, with the match selected.
    void close();

    // Goes to the next match, after the last one to the first; or to the previous one. Opens the
    // bar if nothing has been typed.
    void findNext();
    void findPrevious();

private:
    void findTyped();
    void findFrom(int position, QTextDocument::FindFlags direction);
    void highlight();
    void bringIntoView();
    void tellResult();
    void tell(const QString &words, bool isMissing);
    void forget();
    [[nodiscard]] QString wanted() const;

    QTextEdit *const m_view;
    KovaLineEdit *const m_field;
    QTextCursor m_match;
};
