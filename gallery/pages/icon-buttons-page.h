// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"

class KovaIconButton;
class QGridLayout;

// Icon buttons: a tool bar that works, and a table of the states.
class IconButtonsPage : public GalleryPage
{
    Q_OBJECT

public:
    IconButtonsPage();

private:
    KovaIconButton *makeLive(const QString &imageName, const QString &name);
    KovaIconButton *makeMenuButton();
    QWidget *makeToolBar();
    QWidget *makeStates();
    void addStates(QGridLayout *grid, const QString &imageName, const QString &name);
};
