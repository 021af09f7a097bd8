// SPDX-License-Identifier: MIT

#include "sheet-keys_p.h"

#include "sheet-buttons_p.h"

#include "kovakit-qt/utils/keys_p.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPushButton>

namespace {

void pressFocusedButton(const QWidget *sheet, QAbstractButton *fallback)
{
    auto *focused = qobject_cast<QAbstractButton *>(sheet->window()->focusWidget());
    if (focused && sheet->isAncestorOf(focused))
        focused->click();
    else if (fallback)
        fallback->click();
}

void pressMnemonic(const QWidget *sheet, const QKeyEvent *event)
{
    const QKeySequence pressed(event->key() | int(event->modifiers()));
    for (QAbstractButton *button : sheet->findChildren<QAbstractButton *>()) {
        if (button->isVisible() && !button->shortcut().isEmpty() && button->shortcut() == pressed) {
            button->click();
            return;
        }
    }
}

} // namespace

void pressSheetKey(const QWidget *sheet, const QDialogButtonBox *box, const QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        if (QPushButton *second = box->button(secondButton))
            second->click();
    } else if (isReturn(event) || event->key() == Qt::Key_Space) {
        pressFocusedButton(sheet, box->button(acceptButton));
    } else {
        pressMnemonic(sheet, event);
    }
}
