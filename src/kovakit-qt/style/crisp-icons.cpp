// SPDX-License-Identifier: MIT

#include "crisp-icons_p.h"

#include <QCoreApplication>
#include <QIcon>

CrispIcons::CrispIcons()
    : m_before(QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps))
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}

CrispIcons::~CrispIcons()
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, m_before);
}

QIcon CrispIcons::unchanged(const QIcon &icon, const QSize &size)
{
    QIcon result;
    if (icon.isNull())
        return result;
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled})
        result.addPixmap(icon.pixmap(size, mode), mode);
    return result;
}
