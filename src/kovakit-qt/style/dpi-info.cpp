// SPDX-License-Identifier: MIT

#include "dpi-info.h"

#include "pixel-lengths_p.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

// Whole numbers both, as the sizes of style texts and pictures have always been computed from: 1.5
// device pixels per pixel count as 1.
int dotsPerInch()
{
    constexpr int withoutScreen = 72;
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? qRound(screen->logicalDotsPerInchX()) : withoutScreen;
}

int devicePixelRatio()
{
    return int(qGuiApp->devicePixelRatio());
}

} // namespace

DPIinfo::DPIinfo()
    : m_scale(dotsPerInch() / 96.0)
    , m_devicePixelRatio(devicePixelRatio())
{
}

DPIinfo *DPIinfo::getInstance()
{
    static DPIinfo instance;
    return &instance;
}

double DPIinfo::getDPI() const
{
    return m_scale;
}

double DPIinfo::getDPR() const
{
    return m_devicePixelRatio;
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
