// SPDX-License-Identifier: MIT

#include "sheet-core_p.h"

#include "sheet-buttons_p.h"

#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

SheetCore::SheetCore(QWidget *sheet, SheetModality::Callbacks callbacks, SheetFit::Ways ways)
    : buttonBox(makeButtonBox(sheet))
    , fit(sheet, buttonBox, std::move(ways))
    , m_modality(sheet, std::move(callbacks))
{
}

QAbstractButton *SheetCore::button(QMessageBox::StandardButton which) const
{
    return buttonBox->button(QDialogButtonBox::StandardButton(which));
}

int SheetCore::codeOf(QAbstractButton *which) const
{
    return buttonBox->standardButton(which);
}

int SheetCore::exec(QWidget *focused, Qt::FocusReason reason)
{
    return m_modality.exec(m_blockWindowButton, focused, reason);
}

void SheetCore::show(QWidget *focused)
{
    m_modality.begin(false, focused);
}

void SheetCore::showWithBlock()
{
    m_modality.begin(m_blockWindowButton);
}

bool SheetCore::filterWindow(const QObject *watched, QEvent *event)
{
    return m_modality.filterWindow(watched, event, m_blockWindowButton, buttonBox);
}
