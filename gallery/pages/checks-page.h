// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"

class QCheckBox;

// Check boxes and radio buttons: a form that works, and a table of the states.
class ChecksPage : public GalleryPage
{
    Q_OBJECT

public:
    ChecksPage();

private:
    QWidget *makeFolders();
    QWidget *makeSchedule();
    QWidget *makeStates();
    QCheckBox *makeFolder(const QString &text, bool checked);
};
