// SPDX-License-Identifier: MIT

#include "icon-buttons-page.h"

#include "page-widgets.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/kova-icon-button.h>

#include <QAction>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QStyle>
#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <QToolButton>

#include <utility>

namespace {

// An icon button that looks as in one state for ever.
class PinnedIconButton : public KovaIconButton
{
public:
    PinnedIconButton(const QString &imageName, ImageManager::ImageType type, QStyle::State added)
        : KovaIconButton(getGlobalImage(imageName, type))
        , m_added(added)
    {
        setFocusPolicy(Qt::NoFocus);
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QStyleOptionToolButton option;
        initStyleOption(&option);
        option.state |= m_added;
        QStylePainter(this).drawComplexControl(QStyle::CC_ToolButton, option);
    }

private:
    QStyle::State m_added;
};

} // namespace

IconButtonsPage::IconButtonsPage()
{
    add(makeToolBar());
    add(makeStates());
}

KovaIconButton *IconButtonsPage::makeLive(const QString &imageName, const QString &name)
{
    auto *button = new KovaIconButton(imageName);
    button->setAccessibleName(name);
    button->setToolTip(name);
    connect(button, &QToolButton::clicked, this,
            [this, name] { report(tr("\"%1\" was clicked.").arg(name)); });
    return button;
}

KovaIconButton *IconButtonsPage::makeMenuButton()
{
    const QString name = tr("More actions");
    auto *button = new KovaIconButton(QStringLiteral("bt_more"));
    button->setAccessibleName(name);
    button->setToolTip(name);
    auto *menu = new QMenu(button);
    setStyleKey(menu, "component.menu");
    for (const QString &text : {tr("Verify backup"), tr("Export task"), tr("Show log")})
        menu->addAction(text);
    connect(menu, &QMenu::triggered, this, [this](const QAction *action) {
        report(tr("\"%1\" was chosen from the menu.").arg(action->text()));
    });
    button->setMenu(menu);
    addPopup(button, QStringLiteral("menu"), [button] { button->showMenu(); });
    return button;
}

QWidget *IconButtonsPage::makeToolBar()
{
    auto *card =
        new Card(tr("A tool bar"), tr("Each button names itself in a tooltip and to screen "
                                      "readers. The last one opens a menu at the first press."));
    KovaIconButton *unavailable =
        makeLive(QStringLiteral("bt_download"), tr("Restore (no version selected)"));
    unavailable->setEnabled(false);
    card->addRow({makeLive(QStringLiteral("bt_add"), tr("New backup task")),
                  makeLive(QStringLiteral("bt_edit"), tr("Edit task")),
                  makeLive(QStringLiteral("bt_delete"), tr("Delete task")),
                  makeLive(QStringLiteral("bt_refresh"), tr("Check for changes")), unavailable,
                  makeLive(QStringLiteral("bt_settings"), tr("Settings")), makeMenuButton()});
    return card;
}

QWidget *IconButtonsPage::makeStates()
{
    auto *card = new Card(tr("Pictures for each state"),
                          tr("At rest, under the pointer, pressed, with the focus and "
                             "switched off."));
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(kovaPx(24));
    grid->setVerticalSpacing(kovaPx(8));
    const QStringList states = {tr("At rest"), tr("Under the pointer"), tr("Pressed"),
                                tr("With the focus"), tr("Switched off")};
    for (int column = 0; column < states.size(); ++column)
        grid->addWidget(makeRowLabel(states[column]), 0, column + 1);

    addStates(grid, QStringLiteral("bt_add"), tr("Add"));
    addStates(grid, QStringLiteral("bt_edit"), tr("Edit"));
    addStates(grid, QStringLiteral("bt_delete"), tr("Delete"));
    addStates(grid, QStringLiteral("bt_settings"), tr("Settings"));
    addStates(grid, QStringLiteral("bt_pagebar_refresh"), tr("Refresh"));
    addStates(grid, QStringLiteral("bt_next"), tr("Next"));
    grid->setColumnStretch(grid->columnCount(), 1);
    card->add(grid);
    return card;
}

void IconButtonsPage::addStates(QGridLayout *grid, const QString &imageName, const QString &name)
{
    struct State
    {
        ImageManager::ImageType picture;
        QStyle::State look;
        bool enabled;
    };
    const State states[] = {
        {ImageManager::Default, QStyle::State_None, true},
        {ImageManager::Hover, QStyle::State_MouseOver, true},
        {ImageManager::Click, QStyle::State_MouseOver | QStyle::State_Sunken, true},
        {ImageManager::Default, QStyle::State_HasFocus, true},
        {ImageManager::Disable, QStyle::State_None, false},
    };
    const int row = grid->rowCount();
    grid->addWidget(makeRowLabel(name), row, 0);
    int column = 1;
    for (const State &state : states) {
        auto *button = new PinnedIconButton(imageName, state.picture, state.look);
        button->setAccessibleName(name);
        button->setEnabled(state.enabled);
        grid->addWidget(button, row, column++);
    }
}
