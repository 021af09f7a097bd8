#include "message-label.h"

MessageLabel::MessageLabel(QWidget *parent)
    : QLabel(parent)
{
}

void MessageLabel::fitHeight()
{
    const int height = heightForWidth(width());
    if (height >= 0)
        setFixedHeight(height);
}

void MessageLabel::resizeEvent(QResizeEvent *)
{
    fitHeight();
}
