#include "kova-combo-box.h"

#include "input-guards_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QAbstractItemView>
#include <QStyledItemDelegate>

namespace {

QString boxStyle()
{
    const QString style = getStyleSheet("component.combobox", false);
    if (style.isEmpty())
        return style;
    const QString padding = QString::number(6 * DPIinfo::getInstance()->getDPI(), 'g', 6);
    return style.arg(QStringLiteral("padding-left: %1px; \npadding-right: %1px;").arg(padding))
        .arg(QStringLiteral("border: 1px solid #C8D2DC;"));
}

} // namespace

KovaComboBox::KovaComboBox(QWidget *parent)
    : QComboBox(parent)
{
    setStyleSheet(boxStyle() + getStyleSheet("component.scrollbar", false));
    passWheelWithoutFocus(this);
    // The delegate that a combo box brings along does not draw the items' style rules.
    view()->setItemDelegate(new QStyledItemDelegate(view()));
}
