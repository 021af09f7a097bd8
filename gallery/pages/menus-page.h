// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"

class KovaMenu;

// Menus that stay on the screen, and a search field with a menu.
class MenusPage : public GalleryPage
{
    Q_OBJECT

public:
    MenusPage();

private:
    QWidget *makeCorners();
    QWidget *makeSearch();
    void openAt(Qt::Corner corner);

    KovaMenu *m_menu;
};
