// SPDX-License-Identifier: MIT

#pragma once

#include <QStyle>
#include <QStyleOption>
#include <QStylePainter>
#include <QWidget>

#include <utility>

// A control that looks as in one state for ever, for tables of looks: @p Control with the states of
// @p added always set. Takes no input.
template<class Control, class Option, QStyle::ControlElement element>
class PinnedState : public Control
{
public:
    template<class... Arguments>
    explicit PinnedState(QStyle::State added, Arguments &&...arguments)
        : Control(std::forward<Arguments>(arguments)...)
        , m_added(added)
    {
        this->setFocusPolicy(Qt::NoFocus);
        this->setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        Option option;
        this->initStyleOption(&option);
        option.state |= m_added;
        QStylePainter(this).drawControl(element, option);
    }

private:
    QStyle::State m_added;
};
