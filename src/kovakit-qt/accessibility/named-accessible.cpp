#include "named-accessible_p.h"

#include <QTextDocument>
#include <QTextDocumentFragment>

QString withoutMarkup(const QString &text)
{
    return Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
}

QString NamedAccessible::text(QAccessible::Text kind) const
{
    const QString own = QAccessibleWidget::text(kind);
    return kind == QAccessible::Name && own.isEmpty() ? shownName() : own;
}
