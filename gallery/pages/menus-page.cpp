// SPDX-License-Identifier: MIT

#include "menus-page.h"

#include "page-widgets.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-filter-bar.h>
#include <kovakit-qt/widgets/kova-icon-button.h>
#include <kovakit-qt/widgets/kova-menu.h>

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QPushButton>
#include <QScreen>

#include <utility>

MenusPage::MenusPage()
    : m_menu(new KovaMenu(this))
{
    setStyleKey(m_menu, "component.menu");
    for (const QString &text :
         {tr("Restore this version"), tr("Compare with today"), tr("Show in folder")})
        m_menu->addAction(text);
    m_menu->addSeparator();
    m_menu->addAction(tr("Delete this version"))->setEnabled(false);
    connect(m_menu, &QMenu::triggered, this, [this](const QAction *action) {
        report(tr("\"%1\" was chosen from the menu.").arg(action->text()));
    });
    add(makeCorners());
    add(makeSearch());
}

QWidget *MenusPage::makeCorners()
{
    auto *card = new Card(tr("A menu at each corner of the screen"),
                          tr("The menu is opened beyond the corner and pulls itself "
                             "back onto the screen."));
    const auto makeButton = [this](const QString &text, Qt::Corner corner) {
        auto *button = new KovaButton(text, KovaButton::Standard);
        connect(button, &QPushButton::clicked, this, [this, corner] { openAt(corner); });
        return button;
    };
    card->addRow({makeButton(tr("Top left"), Qt::TopLeftCorner),
                  makeButton(tr("Top right"), Qt::TopRightCorner)});
    card->addRow({makeButton(tr("Bottom left"), Qt::BottomLeftCorner),
                  makeButton(tr("Bottom right"), Qt::BottomRightCorner)});
    return card;
}

void MenusPage::openAt(Qt::Corner corner)
{
    const QRect area = screen()->availableGeometry();
    const bool right = corner == Qt::TopRightCorner || corner == Qt::BottomRightCorner;
    const bool bottom = corner == Qt::BottomLeftCorner || corner == Qt::BottomRightCorner;
    const int beyond = kovaPx(40);
    m_menu->popup({right ? area.right() + beyond : area.left() - beyond,
                   bottom ? area.bottom() + beyond : area.top() - beyond});
}

QWidget *MenusPage::makeSearch()
{
    auto *card =
        new Card(tr("Search field"), tr("Return searches. Down, or the button in the field, opens "
                                        "the menu; Escape closes it again."));
    auto *bar = new KovaFilterBar;
    bar->setPlaceholderText(tr("Search in backups"));
    bar->setAccessibleName(bar->placeholderText());
    bar->setFixedWidth(kovaPx(280));
    auto *menu = new KovaMenu(bar);
    menu->setTitle(tr("Search in"));
    setStyleKey(menu, "component.menu");
    auto *group = new QActionGroup(menu);
    for (const QString &text : {tr("File names"), tr("Contents"), tr("Both")}) {
        QAction *action = group->addAction(text);
        action->setCheckable(true);
        menu->addAction(action);
    }
    group->actions().constFirst()->setChecked(true);
    bar->setMenu(menu);
    connect(bar, &KovaFilterBar::sigKeywordChanged, this, [this, group](const QString &keyword) {
        report(tr("Searching for \"%1\" in: %2.").arg(keyword, group->checkedAction()->text()));
    });
    auto *search = new KovaButton(tr("Search"), KovaButton::Standard);
    connect(search, &QPushButton::clicked, bar, &KovaFilterBar::slotKeywordChange);
    auto *off = new KovaFilterBar;
    off->setMenu(menu);
    off->setAccessibleName(bar->placeholderText());
    off->setText(tr("Switched off"));
    off->setEnabled(false);
    card->addRow({bar, search, off});
    addPopup(bar, QStringLiteral("search"),
             [bar] { bar->findChild<KovaIconButton *>()->showMenu(); });
    return card;
}
