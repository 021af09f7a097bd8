// SPDX-License-Identifier: MIT

#include "page-registry.h"

#include "pages/buttons-page.h"
#include "pages/checks-page.h"
#include "pages/dates-page.h"
#include "pages/help-page.h"
#include "pages/icon-buttons-page.h"
#include "pages/input-page.h"
#include "pages/labels-page.h"
#include "pages/log-page.h"
#include "pages/long-table-page.h"
#include "pages/look-ups-page.h"
#include "pages/menus-page.h"
#include "pages/message-boxes-page.h"
#include "pages/path-page.h"
#include "pages/settings-page.h"
#include "pages/sheets-page.h"
#include "pages/tree-page.h"

namespace {

template<class Page>
GalleryPage *makePage()
{
    return new Page;
}

} // namespace

const std::vector<PageEntry> &pageRegistry()
{
    static const std::vector<PageEntry> pages = {
        {QStringLiteral("buttons"), QT_TR_NOOP("Buttons"),
         QT_TR_NOOP("Push buttons in the six looks of the house."), makePage<ButtonsPage>},
        {QStringLiteral("icon-buttons"), QT_TR_NOOP("Icon buttons"),
         QT_TR_NOOP("Pictures to press, with a picture for each state."),
         makePage<IconButtonsPage>},
        {QStringLiteral("checks"), QT_TR_NOOP("Checks and choices"),
         QT_TR_NOOP("Check boxes and radio buttons."), makePage<ChecksPage>},
        {QStringLiteral("settings"), QT_TR_NOOP("Settings form"),
         QT_TR_NOOP("Fields with captions, units and errors, and lists to choose from."),
         makePage<SettingsPage>},
        {QStringLiteral("labels"), QT_TR_NOOP("Labels and links"),
         QT_TR_NOOP("Text that wraps, text to press, text in tooltips."), makePage<LabelsPage>},
        {QStringLiteral("menus"), QT_TR_NOOP("Menus and search"),
         QT_TR_NOOP("Menus that stay on the screen, and a field with a menu."),
         makePage<MenusPage>},
        {QStringLiteral("path"), QT_TR_NOOP("Path bar"),
         QT_TR_NOOP("A button for each folder of a path."), makePage<PathPage>},
        {QStringLiteral("look-ups"), QT_TR_NOOP("Look-ups"),
         QT_TR_NOOP("Language codes and the names of file icons."), makePage<LookUpsPage>},
        {QStringLiteral("sheets"), QT_TR_NOOP("Message sheets"),
         QT_TR_NOOP("Messages and questions inside the window they belong to."),
         makePage<SheetsPage>},
        {QStringLiteral("message-boxes"), QT_TR_NOOP("Message boxes"),
         QT_TR_NOOP("The same in one call, in a window or without one."),
         makePage<MessageBoxesPage>},
        {QStringLiteral("input"), QT_TR_NOOP("Input and countdown"),
         QT_TR_NOOP("A question for a text, and one that answers itself."), makePage<InputPage>},
        {QStringLiteral("dates"), QT_TR_NOOP("Dates"),
         QT_TR_NOOP("Fields for dates, and the calendar that they open."), makePage<DatesPage>},
        {QStringLiteral("log"), QT_TR_NOOP("Paged table"),
         QT_TR_NOOP("A long list page by page, under a header of its own."), makePage<LogPage>},
        {QStringLiteral("long-table"), QT_TR_NOOP("Long table"),
         QT_TR_NOOP("The same list unpaged, with all its rows."), makePage<LongTablePage>},
        {QStringLiteral("tree"), QT_TR_NOOP("Folder tree"),
         QT_TR_NOOP("A real folder, with check boxes and names to change."), makePage<TreePage>},
        {QStringLiteral("help"), QT_TR_NOOP("Online help"),
         QT_TR_NOOP("An article from a server, or the page that came with the program."),
         makePage<HelpPage>},
    };
    return pages;
}
