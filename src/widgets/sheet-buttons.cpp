#include "sheet-buttons_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QDialogButtonBox>
#include <QPushButton>

void dressOkButton(QDialogButtonBox *box, const QString &text)
{
    QPushButton *ok = box->button(QDialogButtonBox::Ok);
    ok->setText(text);
    ok->setDefault(true);
    ok->setStyleSheet(getStyleSheet("component.apply_button", false));
}

void dressSecondButton(QDialogButtonBox *box, const QString &text)
{
    QPushButton *second = box->button(QDialogButtonBox::Discard);
    second->setText(text);
    second->setStyleSheet(getStyleSheet("component.cancel_button", false));
}

QString sheetParagraph(const QString &text, int lineHeight)
{
    const QString paragraph = QStringLiteral("<p style='line-height: %1px;'>").arg(lineHeight)
                            + text + QLatin1String("</p>");
    return DPIinfo::getInstance()->getScaledStyleSheet(paragraph);
}
