// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class KovaButton;
class QBoxLayout;
class QLabel;

// What a help window says of its page, with a button to try again: in the middle of an empty page,
// or in a strip below one that is there. Hidden at first; styled by "component.help_notice".
class PageNotice : public QWidget
{
    Q_OBJECT

public:
    // @p parent owns it.
    explicit PageNotice(QWidget *parent);

    // Says @p words, and lets the user try again if @p canRetry.
    void say(const QString &words, bool canRetry);

    // Lays the words and the button out one below the other, or side by side in a strip.
    void setStrip(bool strip);

    // Gives the keyboard to the button.
    void focusRetry();

Q_SIGNALS:
    // Emitted when the user wants to try again.
    void retried();

private:
    QBoxLayout *const m_layout;
    QLabel *const m_label;
    KovaButton *const m_retry;
};
