// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"

class Card;

// Asking for something: the input sheet, and the message box that goes ahead by itself.
class InputPage : public GalleryPage
{
    Q_OBJECT

public:
    InputPage();

private:
    Card *makeFolderName();
    Card *makeCountdown();

    void askForName();
    void rename();
    void restart();
};
