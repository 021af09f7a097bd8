// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"

class Card;
class KovaMessageSheet;

// Message sheets: every type and variant of KovaMessageSheet, opened by hand as a host does that
// needs more than a message box in one call.
class SheetsPage : public GalleryPage
{
    Q_OBJECT

public:
    SheetsPage();

private:
    Card *makeTypes();
    Card *makeVariants();
    void addSheet(Card *card, const QString &sceneName, const QString &label,
                  const QString &explanation, void (SheetsPage::*open)());

    // Runs @p sheet over the window and reports what it returned.
    void run(KovaMessageSheet &sheet);
    // The same for a sheet without buttons: a job of two seconds ends it.
    void runJob(KovaMessageSheet &sheet);

    void openProcessing();
    void openInformation();
    void openWarning();
    void openQuestion();
    void openUpgrade();
    void openWarningQuestion();
    void openAnimation();
    void openInformative();
    void openCustomButtons();
    void openLongText();
    void openCloseable();
};
