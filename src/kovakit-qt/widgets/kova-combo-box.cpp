// SPDX-License-Identifier: MIT

#include "kova-combo-box.h"

#include "kovakit-qt/style/placeholder-color_p.h"
#include "kovakit-qt/utils/input-guards_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QAbstractItemView>
#include <QChildEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QRegularExpressionMatchIterator>
#include <QStyleOptionComboBox>
#include <QStyledItemDelegate>

namespace {

// The places of the template take @p padding and @p border. What looks like one in the name of a
// picture's folder is none.
QString filled(QString style, const QString &padding, const QString &border)
{
    static const QRegularExpression url(QStringLiteral(R"(url\((?:"[^"]*"|[^)]*)\))"));
    QStringList urls;
    for (auto match = url.globalMatch(style); match.hasNext();)
        urls.append(match.next().captured());
    const QChar stand(QChar::ObjectReplacementCharacter);
    QStringList parts = style.replace(url, stand).arg(padding).arg(border).split(stand);
    for (int i = 0; i < urls.size(); ++i)
        parts[i] += urls.at(i);
    return parts.join(QString());
}

QString boxStyle()
{
    const QString style = getStyleSheet("component.combobox", false);
    if (style.isEmpty())
        return style;
    const QString padding = QString::number(6 * DPIinfo::getInstance()->getDPI(), 'g', 6);
    return filled(style, QStringLiteral("padding-left: %1px; \npadding-right: %1px;").arg(padding),
                  QStringLiteral("border: 1px solid #C8D2DC;"));
}

} // namespace

KovaComboBox::KovaComboBox(QWidget *parent)
    : QComboBox(parent)
{
    setStyleSheet(boxStyle() + getStyleSheet("component.scrollbar", false));
    passWheelWithoutFocus(this);
    setPlaceholderApart(this);
    // The delegate that a combo box brings along does not draw the items' style rules.
    view()->setItemDelegate(new QStyledItemDelegate(view()));
}

void KovaComboBox::paintEvent(QPaintEvent *)
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const bool isEmpty = currentIndex() < 0 && !isEditable();
    paintComboBox(this, option, isEmpty ? placeholderText() : QString());
}

void KovaComboBox::childEvent(QChildEvent *event)
{
    auto *edit = qobject_cast<QLineEdit *>(event->child());
    if (edit && event->polished())
        setPlaceholderApart(edit);
    QComboBox::childEvent(event);
}
