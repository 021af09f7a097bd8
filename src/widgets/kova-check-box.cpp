#include "kova-check-box.h"

#include <kovakit-qt/style/style-manager.h>

KovaCheckBox::KovaCheckBox(const QString &text, QWidget *parent)
    : QCheckBox(text, parent)
{
    setStyleSheet(getStyleSheet("component.checkbox", false));
}
