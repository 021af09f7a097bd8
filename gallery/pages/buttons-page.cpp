// SPDX-License-Identifier: MIT

#include "buttons-page.h"

#include "page-widgets.h"
#include "pinned-state.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/utils/component-strings.h>
#include <kovakit-qt/widgets/kova-button.h>

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>

#include <utility>

namespace {

using PinnedButton = PinnedState<KovaButton, QStyleOptionButton, QStyle::CE_PushButton>;

} // namespace

ButtonsPage::ButtonsPage()
{
    add(makeLooks());
    add(makeWords());
}

QWidget *ButtonsPage::makeLooks()
{
    auto *card = new Card(tr("Looks and states"),
                          tr("The first button of each row is alive. The others show "
                             "what it looks like in each of its states."));
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(kovaPx(12));
    grid->setVerticalSpacing(kovaPx(8));
    int column = 1;
    for (const QString &state : {tr("Try it"), tr("Under the pointer"), tr("Pressed"),
                                 tr("With the focus"), tr("Switched off")})
        grid->addWidget(makeRowLabel(state), 0, column++);

    addLook(grid, KovaButton::Apply, tr("Apply"), tr("Back up"));
    addLook(grid, KovaButton::Standard, tr("Standard"), tr("Browse"));
    addLook(grid, KovaButton::Cancel, tr("Cancel"), tr("Not now"));
    addLook(grid, KovaButton::Red, tr("Red"), tr("Delete"));
    addLook(grid, KovaButton::SelectedPage, tr("Current page"), QStringLiteral("3"));
    addLook(grid, KovaButton::OtherPage, tr("Other page"), QStringLiteral("4"));
    grid->setColumnStretch(grid->columnCount(), 1);
    card->add(grid);
    return card;
}

void ButtonsPage::addLook(QGridLayout *grid, int type, const QString &name, const QString &text)
{
    const int row = grid->rowCount();
    grid->addWidget(makeRowLabel(name), row, 0);
    grid->addWidget(makeLive(text, type), row, 1);
    grid->addWidget(new PinnedButton(QStyle::State_MouseOver, text, type), row, 2);
    grid->addWidget(new PinnedButton(QStyle::State_MouseOver | QStyle::State_Sunken, text, type),
                    row, 3);
    grid->addWidget(new PinnedButton(QStyle::State_HasFocus, text, type), row, 4);
    auto *disabled = new KovaButton(text, type);
    disabled->setEnabled(false);
    grid->addWidget(disabled, row, 5);
}

QWidget *ButtonsPage::makeWords()
{
    auto *card = new Card(tr("In the language of the user"),
                          tr("A button is as wide as its text asks for. These texts are "
                             "the library's own; start with --lang to change them."));
    const auto word = [](const char *key) {
        return ComponentStrings::getInstance()->getString(QString::fromLatin1(key));
    };
    card->addRow({makeLive(word("ok"), KovaButton::Apply),
                  makeLive(word("wizard_client_upgrade"), KovaButton::Apply),
                  makeLive(word("cancel"), KovaButton::Cancel),
                  makeLive(word("today"), KovaButton::Standard)});
    return card;
}

QPushButton *ButtonsPage::makeLive(const QString &text, int type)
{
    auto *button = new KovaButton(text, type);
    connect(button, &QPushButton::clicked, this,
            [this, text] { report(tr("\"%1\" was clicked.").arg(text)); });
    return button;
}
