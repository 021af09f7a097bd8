#include "sheet-accessible_p.h"

#include "named-accessible_p.h"

#include <kovakit-qt/widgets/kova-sheet.h>
#include <kovakit-qt/widgets/message-label.h>

namespace {

class SheetAccessible : public NamedAccessible
{
public:
    explicit SheetAccessible(KovaSheet *sheet)
        : NamedAccessible(sheet, QAccessible::Dialog)
    {
    }

protected:
    QString shownName() const override
    {
        const auto *label = widget()->findChild<MessageLabel *>();
        return label ? withoutMarkup(label->text()) : QString();
    }
};

} // namespace

void installSheetAccessibility()
{
    QAccessible::installFactory(createAccessible<KovaSheet, SheetAccessible>);
}
