// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"

class QGridLayout;
class QPushButton;

// Push buttons: every look in every state, and a few that do something.
class ButtonsPage : public GalleryPage
{
    Q_OBJECT

public:
    ButtonsPage();

private:
    QWidget *makeLooks();
    void addLook(QGridLayout *grid, int type, const QString &name, const QString &text);
    QWidget *makeWords();
    QPushButton *makeLive(const QString &text, int type);
};
