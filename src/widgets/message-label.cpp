#include "message-label.h"

MessageLabel::MessageLabel(QWidget *parent)
    : QLabel(parent)
{
}

void MessageLabel::setMessage(const QString &text)
{
    setMinimumHeight(0);
    setMaximumHeight(QWIDGETSIZE_MAX);
    setText(text);
}

void MessageLabel::resizeEvent(QResizeEvent *)
{
    const int height = heightForWidth(width());
    if (height >= 0)
        setFixedHeight(height);
}
