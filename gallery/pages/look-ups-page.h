// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"

// Language codes of locale names, and icon names of file name extensions.
class LookUpsPage : public GalleryPage
{
    Q_OBJECT

public:
    LookUpsPage();

private:
    QWidget *makeLocales();
    QWidget *makeFileTypes();
};
