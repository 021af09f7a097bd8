// SPDX-License-Identifier: MIT

#pragma once

#include "named-accessible_p.h"

#include "kovakit-qt/utils/markup_p.h"

#include <QWidget>

// Reports a sheet to assistive technology as a dialog with the words of its first Label as name.
template<class Label>
class SheetAccessible : public NamedAccessible
{
public:
    explicit SheetAccessible(QWidget *sheet)
        : NamedAccessible(sheet, QAccessible::Dialog)
    {
    }

protected:
    QString shownName() const override
    {
        const QWidget *sheet = widget();
        const auto *label = sheet->findChild<Label *>();
        return label ? withoutMarkup(label->text()) : QString();
    }
};

// Makes every Sheet report itself in this way. For its constructor.
template<class Sheet, class Label>
void installSheetAccessibility()
{
    QAccessible::installFactory(createAccessible<Sheet, SheetAccessible<Label>>);
}
