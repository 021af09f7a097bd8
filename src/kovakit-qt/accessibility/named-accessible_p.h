// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessibleWidget>

// Names a widget to assistive technology after what it shows, unless its owner gave it a name, and
// describes it by the words of its tool tip, unless its owner described it.
class NamedAccessible : public QAccessibleWidget
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    QString text(QAccessible::Text kind) const override;

protected:
    [[nodiscard]] virtual QString shownName() const = 0;
};

// Makes an Interface for each widget of the class Widget, of which Interface has a constructor.
//
// The constructor of Widget hands this function to QAccessible::installFactory(), which keeps a
// function once, however many widgets hand it over. Qt calls it for an object with the name of the
// object's class; if that gives null, with the name of the base class, and so on. So a widget of a
// derived class gets an Interface too, unless another factory knows the derived class.
template<class Widget, class Interface>
QAccessibleInterface *createAccessible(const QString &className, QObject *object)
{
    if (className != QLatin1String(Widget::staticMetaObject.className()))
        return nullptr;
    auto *widget = qobject_cast<Widget *>(object);
    return widget ? new Interface(widget) : nullptr;
}

// With a screen reader running, Qt asks for the interface of a table or a tree while the
// constructor of its base class runs, when no factory knows it yet, and keeps what it gets. Makes
// Qt ask again.
void renewAccessible(QWidget *widget);
