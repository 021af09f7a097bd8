#include "sheet-buttons_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QEvent>
#include <QPointer>
#include <QProxyStyle>
#include <QPushButton>

#include <algorithm>

namespace {

// Right-aligned buttons with the accept button first, on every platform.
class DialogButtonBoxStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returnData) const override
    {
        if (hint == QStyle::SH_DialogButtonLayout)
            return QDialogButtonBox::WinLayout;
        return baseStyle()->styleHint(hint, option, widget, returnData);
    }
};

// One for all boxes. The style sheets of the buttons go on using it until the last button is gone,
// which a style that belongs to its box does not live to see.
QStyle *dialogButtonBoxStyle()
{
    static QPointer<QStyle> style;
    if (!style) {
        style = new DialogButtonBoxStyle;
        style->setParent(qApp);
    }
    return style;
}

// Hands a style on to its buttons only if it is new to them. Otherwise they would parse their style
// texts again whenever the sheet's surroundings change, as when it is put into a mask.
class SheetButtonBox : public QDialogButtonBox
{
public:
    using QDialogButtonBox::QDialogButtonBox;

protected:
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::StyleChange && buttonsHaveStyle())
            QWidget::changeEvent(event); // NOLINT(bugprone-parent-virtual-call)
        else
            QDialogButtonBox::changeEvent(event);
    }

private:
    [[nodiscard]] bool buttonsHaveStyle() const
    {
        const QList<QAbstractButton *> all = buttons();
        return !all.isEmpty()
            && std::all_of(all.begin(), all.end(), [this](const QAbstractButton *button) {
                   return button->style() == style();
               });
    }
};

} // namespace

QDialogButtonBox *newButtonBox(QWidget *sheet)
{
    return new SheetButtonBox(sheet);
}

void dressButton(QAbstractButton *button, const QString &text, const char *styleKey)
{
    button->setText(text);
    button->setIcon(QIcon());
    button->setStyleSheet(getStyleSheet(styleKey, false));
}

void dressOkButton(QDialogButtonBox *box, const QString &text)
{
    QPushButton *ok = box->button(QDialogButtonBox::Ok);
    ok->setDefault(true);
    dressButton(ok, text, "component.apply_button");
}

void dressSecondButton(QDialogButtonBox *box, const QString &text)
{
    dressButton(box->button(QDialogButtonBox::Discard), text, "component.cancel_button");
}

void orderButtons(QDialogButtonBox *box)
{
    box->setStyle(dialogButtonBoxStyle());
}

QString sheetParagraph(const QString &text, int lineHeight)
{
    const QString paragraph = QStringLiteral("<p style='line-height: %1px;'>").arg(lineHeight)
                            + text + QLatin1String("</p>");
    return DPIinfo::getInstance()->getScaledStyleSheet(paragraph);
}
