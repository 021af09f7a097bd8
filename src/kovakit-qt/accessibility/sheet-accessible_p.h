// SPDX-License-Identifier: MIT

#pragma once

#include "named-accessible_p.h"
#include "window-hold_p.h"

#include "kovakit-qt/utils/markup_p.h"

#include <QLabel>
#include <QWidget>

// Reports a sheet to assistive technology as a dialog, modal while it holds its window. The words
// of its first Label are the name; what its picture is called and the words of the other labels
// are the description.
template<class Label>
class SheetAccessible : public NamedAccessible
{
public:
    explicit SheetAccessible(QWidget *sheet)
        : NamedAccessible(sheet, QAccessible::Dialog)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = NamedAccessible::state();
        state.modal = holdsForAssistive(widget());
        return state;
    }

    QString text(QAccessible::Text kind) const override
    {
        const QString own = NamedAccessible::text(kind);
        return kind == QAccessible::Description && own.isEmpty() ? shownDescription() : own;
    }

protected:
    QString shownName() const override
    {
        const QWidget *sheet = widget();
        const auto *label = sheet->findChild<Label *>();
        return label ? withoutMarkup(label->text()) : QString();
    }

private:
    QString shownDescription() const
    {
        QStringList pictures;
        QStringList texts;
        const QWidget *sheet = widget();
        for (const QLabel *label : sheet->findChildren<QLabel *>()) {
            if (qobject_cast<const Label *>(label))
                texts.append(withoutMarkup(label->text()));
            else if (!label->accessibleName().isEmpty())
                pictures.append(label->accessibleName());
        }
        return (pictures + texts.mid(1)).join(QLatin1Char('\n'));
    }
};

// Makes every Sheet report itself in this way. For its constructor.
template<class Sheet, class Label>
void installSheetAccessibility()
{
    QAccessible::installFactory(createAccessible<Sheet, SheetAccessible<Label>>);
}
