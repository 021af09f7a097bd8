#include "message-label.h"

MessageLabel::MessageLabel(QWidget *parent)
    : QLabel(parent)
{
}

void MessageLabel::fitHeight()
{
    // A label never asks for less than its minimum.
    setMinimumHeight(0);
    const int height = heightForWidth(width());
    if (height >= 0)
        setFixedHeight(height);
}

void MessageLabel::resizeEvent(QResizeEvent *)
{
    fitHeight();
}
