// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"

// Labels that grow with their text, links, and plain text in tooltips.
class LabelsPage : public GalleryPage
{
    Q_OBJECT

public:
    LabelsPage();

private:
    QWidget *makeSplitter();
    QWidget *makeLinks();
    QWidget *makeTooltips();
};
