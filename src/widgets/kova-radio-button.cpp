#include "kova-radio-button.h"

#include <kovakit-qt/style/style-manager.h>

KovaRadioButton::KovaRadioButton(const QString &text, QWidget *parent)
    : QRadioButton(text, parent)
{
    setStyleSheet(getStyleSheet("component.radio_button", false));
}
