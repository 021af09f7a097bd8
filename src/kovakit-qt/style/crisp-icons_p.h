// SPDX-License-Identifier: MIT

#pragma once

#include <QIcon>

// While one of these lives, icons are painted from all the pixels that the device has.
//
// Qt does so only where the host asked for it with Qt::AA_UseHighDpiPixmaps, before it created
// anything. The kit's pictures must be crisp without that, and the host's own icons stay as they
// are: hold one for as long as it takes to paint a picture of the kit, and no longer.
class CrispIcons
{
public:
    CrispIcons();
    ~CrispIcons();
    Q_DISABLE_COPY(CrispIcons)

    // @p icon, which lies within the same painting, with the pixels that it is painted from
    // without.
    [[nodiscard]] static QIcon unchanged(const QIcon &icon, const QSize &size);

private:
    bool m_before;
};
