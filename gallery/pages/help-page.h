// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"
#include "help-site.h"

class HelpWindow;
class QButtonGroup;

// The help window with a server that behaves in five ways, in two languages.
class HelpPage : public GalleryPage
{
    Q_OBJECT

public:
    HelpPage();

private:
    [[nodiscard]] QWidget *makeServerCard();
    [[nodiscard]] QWidget *makeLanguageCard();
    void openHelp(const QString &language, HelpSite::Mode mode);

    HelpSite m_site;
    QButtonGroup *m_modes;
};
