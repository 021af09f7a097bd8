// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"

class Card;
class KovaCalanderView;
class KovaDateSelector;
class QHBoxLayout;

// Dates: a period of two date selectors that limit each other, and the calendar in every language
// of the theme.
class DatesPage : public GalleryPage
{
    Q_OBJECT

public:
    DatesPage();

private:
    Card *makePeriod();
    Card *makeLanguages();
    void limitPeriod();
    void showLanguage(const QString &code);

    KovaDateSelector *m_from = nullptr;
    KovaDateSelector *m_to = nullptr;
    QHBoxLayout *m_calendarRow = nullptr;
    KovaCalanderView *m_calendar = nullptr;
};
