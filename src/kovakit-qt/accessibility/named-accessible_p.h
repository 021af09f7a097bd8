#pragma once

#include <QAccessibleWidget>

// The words of a label's text, without markup if it has any.
[[nodiscard]] QString withoutMarkup(const QString &text);

// Names a widget to assistive technology after what it shows, unless its owner gave it a name.
class NamedAccessible : public QAccessibleWidget
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    QString text(QAccessible::Text kind) const override;

protected:
    [[nodiscard]] virtual QString shownName() const = 0;
};

// For QAccessible::installFactory(), which takes each factory once however often it is given.
template<class Widget, class Interface>
QAccessibleInterface *createAccessible(const QString &className, QObject *object)
{
    if (className != QLatin1String(Widget::staticMetaObject.className()))
        return nullptr;
    auto *widget = qobject_cast<Widget *>(object);
    return widget ? new Interface(widget) : nullptr;
}
