// SPDX-License-Identifier: MIT

#include "checks-page.h"

#include "page-widgets.h"
#include "pinned-state.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/kova-check-box.h>
#include <kovakit-qt/widgets/kova-radio-button.h>

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

using PinnedCheckBox = PinnedState<KovaCheckBox, QStyleOptionButton, QStyle::CE_CheckBox>;
using PinnedRadioButton = PinnedState<KovaRadioButton, QStyleOptionButton, QStyle::CE_RadioButton>;

struct Look
{
    const char *name;
    QStyle::State added;
    bool enabled;
};

const Look looks[] = {
    {QT_TR_NOOP("At rest"), QStyle::State_None, true},
    {QT_TR_NOOP("Under the pointer"), QStyle::State_MouseOver, true},
    {QT_TR_NOOP("Pressed"), QStyle::State_MouseOver | QStyle::State_Sunken, true},
    {QT_TR_NOOP("With the focus"), QStyle::State_HasFocus, true},
    {QT_TR_NOOP("Switched off"), QStyle::State_None, false},
};

void addCheckBoxes(QGridLayout *grid, const QString &text, Qt::CheckState state)
{
    const int row = grid->rowCount();
    int column = 0;
    for (const Look &look : looks) {
        auto *box = new PinnedCheckBox(look.added, text);
        box->setTristate(state == Qt::PartiallyChecked);
        box->setCheckState(state);
        box->setEnabled(look.enabled);
        grid->addWidget(box, row, column++);
    }
}

void addRadioButtons(QGridLayout *grid, const QString &text, bool checked)
{
    const int row = grid->rowCount();
    int column = 0;
    for (const Look &look : looks) {
        auto *button = new PinnedRadioButton(look.added, text);
        button->setAutoExclusive(false);
        button->setChecked(checked);
        button->setEnabled(look.enabled);
        grid->addWidget(button, row, column++);
    }
}

} // namespace

ChecksPage::ChecksPage()
{
    addSideBySide({makeFolders(), makeSchedule()});
    add(makeStates());
}

QWidget *ChecksPage::makeFolders()
{
    auto *card = new Card(tr("Folders to back up"), tr("The first box stands for all the others."));
    auto *all = new KovaCheckBox(tr("Everything in my home folder"));
    all->setTristate(true);
    const QList<QCheckBox *> folders = {
        makeFolder(tr("Documents"), true),
        makeFolder(tr("Pictures"), true),
        makeFolder(tr("Downloads"), false),
    };
    auto *network = new KovaCheckBox(tr("Network drive (not connected)"));
    network->setEnabled(false);

    const auto count = [folders] {
        return int(std::count_if(folders.begin(), folders.end(),
                                 [](const QCheckBox *box) { return box->isChecked(); }));
    };
    const auto followFolders = [this, all, folders, count] {
        const int chosen = count();
        const QSignalBlocker quiet(all);
        all->setCheckState(chosen == 0                ? Qt::Unchecked
                           : chosen == folders.size() ? Qt::Checked
                                                      : Qt::PartiallyChecked);
        report(tr("%1 of %2 folders are backed up.").arg(chosen).arg(folders.size()));
    };
    followFolders();
    // Not clicked(): assistive technology ticks without a click.
    connect(all, &QCheckBox::stateChanged, this, [folders, followFolders](int state) {
        for (QCheckBox *box : folders)
            box->setChecked(state != Qt::Unchecked);
        followFolders();
    });

    card->add(all);
    auto *indented = new QVBoxLayout;
    indented->setContentsMargins(kovaPx(24), 0, 0, 0);
    for (QCheckBox *box : folders) {
        connect(box, &QCheckBox::toggled, this, followFolders);
        indented->addWidget(box);
    }
    indented->addWidget(network);
    card->add(indented);
    return card;
}

QCheckBox *ChecksPage::makeFolder(const QString &text, bool checked)
{
    auto *box = new KovaCheckBox(text);
    box->setChecked(checked);
    return box;
}

QWidget *ChecksPage::makeSchedule()
{
    auto *card = new Card(tr("When to back up"), tr("One of them, always."));
    const QStringList choices = {tr("As soon as something changes"), tr("Every evening at 22:00"),
                                 tr("On Sundays"), tr("Only when I ask for it")};
    for (const QString &choice : choices) {
        auto *button = new KovaRadioButton(choice);
        button->setChecked(choice == choices[1]);
        connect(button, &QRadioButton::toggled, this, [this, choice](bool chosen) {
            if (chosen)
                report(tr("Chosen: %1.").arg(choice));
        });
        card->add(button);
    }
    auto *never = new KovaRadioButton(tr("When plugged in (desktop computer)"));
    never->setEnabled(false);
    card->add(never);
    return card;
}

QWidget *ChecksPage::makeStates()
{
    auto *card = new Card(tr("Looks and states"));
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(kovaPx(24));
    grid->setVerticalSpacing(kovaPx(4));
    int column = 0;
    for (const Look &look : looks)
        grid->addWidget(makeRowLabel(tr(look.name)), 0, column++);
    addCheckBoxes(grid, tr("Off"), Qt::Unchecked);
    addCheckBoxes(grid, tr("On"), Qt::Checked);
    addCheckBoxes(grid, tr("In part"), Qt::PartiallyChecked);
    addRadioButtons(grid, tr("Not chosen"), false);
    addRadioButtons(grid, tr("Chosen"), true);
    grid->setColumnStretch(grid->columnCount(), 1);
    card->add(grid);
    return card;
}
