// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"

class QGridLayout;

// The six functions that show a message in one call, in both of their forms.
class MessageBoxesPage : public GalleryPage
{
    Q_OBJECT

public:
    MessageBoxesPage();

private:
    // Adds a row: @p call shows a message over the widget that it is given, or on its own if that
    // is null, and returns what to report.
    void addFunction(QGridLayout *grid, const QString &sceneName, const QString &function,
                     QString (*call)(QWidget *parent));
};
