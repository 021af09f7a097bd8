#include "dpi-info.h"

#include "pixel-lengths_p.h"

#include <QApplication>
#include <QDesktopWidget>

DPIinfo::DPIinfo()
    : m_scale(QApplication::desktop()->logicalDpiX() / 96.0)
    , m_devicePixelRatio(QApplication::desktop()->devicePixelRatio())
{
}

DPIinfo *DPIinfo::getInstance()
{
    static DPIinfo instance;
    return &instance;
}

QString DPIinfo::getScaledStyleSheet(QString text) const
{
    return scalePixelLengths(text, m_scale);
}

int kovaPx(double designPixels)
{
    return int(designPixels * DPIinfo::getInstance()->getDPI());
}

int kovaPxRounded(double designPixels)
{
    return qRound(designPixels * DPIinfo::getInstance()->getDPI());
}
