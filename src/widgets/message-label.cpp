#include "message-label.h"

MessageLabel::MessageLabel(QWidget *parent)
    : QLabel(parent)
{
}

void MessageLabel::resizeEvent(QResizeEvent *)
{
    const int height = heightForWidth(width());
    if (height >= 0)
        setFixedHeight(height);
}
