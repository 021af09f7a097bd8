// SPDX-License-Identifier: MIT

#include "placeholder-color_p.h"

#include "crisp-icons_p.h"

#include <QApplication>
#include <QColor>
#include <QComboBox>
#include <QEvent>
#include <QPalette>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStylePainter>

namespace {

constexpr int textShare = 7;
constexpr int groundShare = 3;

int mixed(int text, int ground)
{
    return (textShare * text + groundShare * ground) / (textShare + groundShare);
}

// With the house's colours 4.5 to 1 on every ground of a field, that of an error included.
QColor mixed(const QColor &text, const QColor &ground)
{
    return QColor(mixed(text.red(), ground.red()), mixed(text.green(), ground.green()),
                  mixed(text.blue(), ground.blue()));
}

QColor placeholderColor(const QPalette &palette, QPalette::ColorGroup group)
{
    const QPalette host = QApplication::palette();
    if (host.isBrushSet(group, QPalette::PlaceholderText))
        return host.color(group, QPalette::PlaceholderText);
    return mixed(palette.color(group, QPalette::Text), palette.color(group, QPalette::Base));
}

void separate(QWidget *field)
{
    QPalette palette = field->palette();
    bool changed = false;
    // Disabled text is as weak as text may be.
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        if (palette.color(group, QPalette::PlaceholderText) != palette.color(group, QPalette::Text))
            continue;
        const QColor color = placeholderColor(palette, group);
        changed = changed || color != palette.color(group, QPalette::Text);
        palette.setColor(group, QPalette::PlaceholderText, color);
    }
    if (changed)
        field->setPalette(palette);
}

class PaletteWatch : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::PaletteChange)
            separate(static_cast<QWidget *>(watched));
        return false;
    }
};

} // namespace

void setPlaceholderApart(QWidget *field)
{
    static PaletteWatch watch;
    field->installEventFilter(&watch);
    separate(field);
}

void paintComboBox(QComboBox *box, const QStyleOptionComboBox &option, const QString &placeholder)
{
    QStylePainter painter(box);
    painter.setPen(box->palette().color(QPalette::Text));
    {
        const CrispIcons crisp;
        painter.drawComplexControl(QStyle::CC_ComboBox, option);
    }
    if (placeholder.isEmpty()) {
        painter.drawControl(QStyle::CE_ComboBoxLabel, option);
        return;
    }
    const QRect place = box->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                     QStyle::SC_ComboBoxEditField, box);
    painter.setClipRect(place);
    painter.drawItemText(place, Qt::AlignLeft | Qt::AlignVCenter, option.palette, box->isEnabled(),
                         placeholder, QPalette::PlaceholderText);
}
