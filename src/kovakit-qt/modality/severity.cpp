// SPDX-License-Identifier: MIT

#include "severity_p.h"

#include "kovakit-qt/utils/component-strings_p.h"

#include <QLabel>
#include <QMessageBox>

QString severityName(QMessageBox::Icon icon)
{
    switch (icon) {
    case QMessageBox::Information:
        return componentString("accessible_information", "");
    case QMessageBox::Question:
        return componentString("accessible_question", "");
    case QMessageBox::Warning:
    case QMessageBox::Critical:
        return componentString("accessible_warning", "");
    case QMessageBox::NoIcon:
        break;
    }
    return QString();
}

void nameIcon(QMessageBox *box)
{
    const QString name = severityName(box->icon());
    if (auto *label = box->findChild<QLabel *>(QStringLiteral("qt_msgboxex_icon_label")))
        label->setAccessibleName(name);
    if (box->accessibleDescription().isEmpty())
        box->setAccessibleDescription(name);
}
