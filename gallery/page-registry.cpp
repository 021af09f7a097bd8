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
        {QStringLiteral("buttons"), QStringLiteral("Buttons"),
         QStringLiteral("Push buttons in the six looks of the house."), makePage<ButtonsPage>},
        {QStringLiteral("icon-buttons"), QStringLiteral("Icon buttons"),
         QStringLiteral("Pictures to press, with a picture for each state."),
         makePage<IconButtonsPage>},
        {QStringLiteral("checks"), QStringLiteral("Checks and choices"),
         QStringLiteral("Check boxes and radio buttons."), makePage<ChecksPage>},
        {QStringLiteral("settings"), QStringLiteral("Settings form"),
         QStringLiteral("Fields with captions, units and errors, and lists to choose from."),
         makePage<SettingsPage>},
        {QStringLiteral("labels"), QStringLiteral("Labels and links"),
         QStringLiteral("Text that wraps, text to press, text in tooltips."), makePage<LabelsPage>},
        {QStringLiteral("menus"), QStringLiteral("Menus and search"),
         QStringLiteral("Menus that stay on the screen, and a field with a menu."),
         makePage<MenusPage>},
        {QStringLiteral("path"), QStringLiteral("Path bar"),
         QStringLiteral("A button for each folder of a path."), makePage<PathPage>},
        {QStringLiteral("look-ups"), QStringLiteral("Look-ups"),
         QStringLiteral("Language codes and the names of file icons."), makePage<LookUpsPage>},
        {QStringLiteral("sheets"), QStringLiteral("Message sheets"),
         QStringLiteral("Messages and questions inside the window they belong to."),
         makePage<SheetsPage>},
        {QStringLiteral("message-boxes"), QStringLiteral("Message boxes"),
         QStringLiteral("The same in one call, in a window or without one."),
         makePage<MessageBoxesPage>},
        {QStringLiteral("input"), QStringLiteral("Input and countdown"),
         QStringLiteral("A question for a text, and one that answers itself."),
         makePage<InputPage>},
        {QStringLiteral("dates"), QStringLiteral("Dates"),
         QStringLiteral("Fields for dates, and the calendar that they open."), makePage<DatesPage>},
        {QStringLiteral("log"), QStringLiteral("Paged table"),
         QStringLiteral("A long list page by page, under a header of its own."), makePage<LogPage>},
        {QStringLiteral("long-table"), QStringLiteral("Long table"),
         QStringLiteral("The same list unpaged, with all its rows."), makePage<LongTablePage>},
        {QStringLiteral("tree"), QStringLiteral("Folder tree"),
         QStringLiteral("A real folder, with check boxes and names to change."),
         makePage<TreePage>},
        {QStringLiteral("help"), QStringLiteral("Online help"),
         QStringLiteral("An article from a server, or the page that came with the program."),
         makePage<HelpPage>},
    };
    return pages;
}
