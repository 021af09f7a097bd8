// SPDX-License-Identifier: MIT

#include "sheet-buttons_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEvent>
#include <QIcon>
#include <QPointer>
#include <QProxyStyle>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>

#include <algorithm>

namespace {

constexpr char defaultProperty[] = "_kova_default";

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
//
// Assistive technology presses a button with animateClick(), which clicks it some time later. If
// the sheet was answered otherwise meanwhile, the button comes up without a signal.
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

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Timer || isVisible())
            return QDialogButtonBox::eventFilter(watched, event);
        const QSignalBlocker silent(watched);
        return watched->event(event);
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

// In a QDialog a button with autoDefault that gets the focus becomes the default button instead of
// the dialog's own.
QPushButton *sheetButton(QDialogButtonBox *box, QDialogButtonBox::StandardButton which)
{
    QPushButton *button = box->button(which);
    button->setAutoDefault(false);
    button->installEventFilter(box);
    return button;
}

} // namespace

QDialogButtonBox *makeButtonBox(QWidget *sheet)
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
    QPushButton *ok = sheetButton(box, acceptButton);
    setAsDefault(ok);
    dressButton(ok, text, "component.apply_button");
}

void setAsDefault(QPushButton *button)
{
    if (!button)
        return;
    // QPushButton tells the QDialog around it, unless it is itself taken for a window.
    const Qt::WindowFlags flags = button->windowFlags();
    button->overrideWindowFlags(flags | Qt::Window);
    button->setDefault(true);
    button->overrideWindowFlags(flags);
    button->update();
    button->setProperty(defaultProperty, true);
}

void restoreDefaultButtons(const QWidget *sheet)
{
    if (!qobject_cast<const QDialog *>(sheet->window()))
        return;
    for (QPushButton *button : sheet->findChildren<QPushButton *>()) {
        if (button->property(defaultProperty).toBool())
            setAsDefault(button);
    }
}

void dressSecondButton(QDialogButtonBox *box, const QString &text)
{
    dressButton(sheetButton(box, secondButton), text, "component.cancel_button");
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
