#include "message-label.h"

MessageLabel::MessageLabel(QWidget *parent)
    : QLabel(parent)
{
}

void MessageLabel::fitHeight()
{
    // A label never asks for less than its minimum.
    const int minimum = minimumHeight();
    setMinimumHeight(0);
    const int height = heightForWidth(width());
    if (height >= 0)
        setFixedHeight(height);
    else
        setMinimumHeight(minimum);
}

void MessageLabel::resizeEvent(QResizeEvent *)
{
    fitHeight();
}
