#include "sheet-keys_p.h"

#include <kovakit-qt/widgets/kova-sheet.h>

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QPushButton>

namespace {

void pressFocusedButton(const KovaSheet *sheet, QAbstractButton *fallback)
{
    auto *focused = qobject_cast<QAbstractButton *>(sheet->window()->focusWidget());
    if (focused && sheet->isAncestorOf(focused))
        focused->click();
    else if (fallback)
        fallback->click();
}

void pressMnemonic(const KovaSheet *sheet, const QKeyEvent *event)
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

void pressSheetKey(const KovaSheet *sheet, const QDialogButtonBox *box, const QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        if (QPushButton *second = box->button(QDialogButtonBox::Discard))
            second->click();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        pressFocusedButton(sheet, box->button(QDialogButtonBox::Ok));
        break;
    default:
        pressMnemonic(sheet, event);
        break;
    }
}
