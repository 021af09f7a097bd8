#include "sheet-accessible_p.h"

#include "kova-sheet.h"
#include "message-label.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QTextDocumentFragment>

namespace {

class SheetAccessible : public QAccessibleWidget
{
public:
    explicit SheetAccessible(KovaSheet *sheet)
        : QAccessibleWidget(sheet, QAccessible::Dialog)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        const QString own = QAccessibleWidget::text(kind);
        if (kind != QAccessible::Name || !own.isEmpty())
            return own;
        const auto *label = widget()->findChild<MessageLabel *>();
        return label ? QTextDocumentFragment::fromHtml(label->text()).toPlainText() : own;
    }
};

QAccessibleInterface *createInterface(const QString &className, QObject *object)
{
    if (className != QLatin1String(KovaSheet::staticMetaObject.className()))
        return nullptr;
    auto *sheet = qobject_cast<KovaSheet *>(object);
    return sheet ? new SheetAccessible(sheet) : nullptr;
}

} // namespace

void installSheetAccessibility()
{
    [[maybe_unused]] static const bool installed = [] {
        QAccessible::installFactory(createInterface);
        return true;
    }();
}
