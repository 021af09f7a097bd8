// SPDX-License-Identifier: MIT

#include "input-page.h"

#include "page-widgets.h"
#include "result-text.h"

#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-countdown-msg-box.h>
#include <kovakit-qt/widgets/kova-input-sheet.h>
#include <kovakit-qt/widgets/kova-mask.h>

#include <QAbstractButton>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace {

constexpr int buttonWidth = 180;
constexpr int seconds = 10;

// A name is good for a folder when there is something in it and no part of a path.
bool isFolderName(const QString &text)
{
    return !text.trimmed().isEmpty() && !text.contains(QLatin1Char('/'));
}

void acceptOnlyFolderNames(KovaInputSheet *sheet)
{
    QAbstractButton *ok = sheet->button(QMessageBox::Ok);
    const auto check = [ok](const QString &text) { ok->setEnabled(isFolderName(text)); };
    QObject::connect(sheet->getLineEdit(), &QLineEdit::textChanged, ok, check);
    check(sheet->getContent());
}

} // namespace

InputPage::InputPage()
{
    add(makeFolderName());
    add(makeCountdown());
}

Card *InputPage::makeFolderName()
{
    auto *card = new Card(tr("A line of text"));
    auto *create = new KovaButton(tr("New folder"), KovaButton::Standard);
    connect(create, &QPushButton::clicked, this, &InputPage::askForName);
    card->addExplained(create, tr("Asks for a name; an empty one is not accepted."), buttonWidth);
    auto *change = new KovaButton(tr("Rename folder"), KovaButton::Standard);
    connect(change, &QPushButton::clicked, this, &InputPage::rename);
    card->addExplained(change, tr("Starts with the present name, selected."), buttonWidth);
    addScene(QStringLiteral("new-folder"), [this] { askForName(); });
    addScene(QStringLiteral("rename"), [this] { rename(); });
    return card;
}

Card *InputPage::makeCountdown()
{
    auto *card = new Card(tr("A confirmation that goes ahead"));
    auto *button = new KovaButton(tr("Restart"), KovaButton::Standard);
    connect(button, &QPushButton::clicked, this, &InputPage::restart);
    card->addExplained(button, tr("Accepts by itself after ten seconds; Escape cancels."),
                       buttonWidth);
    addScene(QStringLiteral("countdown"), [this] { restart(); });
    return card;
}

void InputPage::askForName()
{
    KovaInputSheet sheet(tr("Name of the new folder in <b>Photos</b>:"), window());
    sheet.getLineEdit()->setPlaceholderText(tr("For instance: Summer 2024"));
    acceptOnlyFolderNames(&sheet);
    KovaMask::createMask(&sheet, window(), KovaMask::dimColor, KovaMask::DeleteWhenEmpty);
    const int code = sheet.exec();
    report(
        tr("The sheet returned %1; the text is \"%2\".").arg(resultText(code), sheet.getContent()));
}

void InputPage::rename()
{
    KovaInputSheet sheet(tr("New name of the folder <b>Summer 2023</b>. Its backups keep "
                            "the old name until they are made anew."),
                         window());
    sheet.getLineEdit()->setText(QStringLiteral("Summer 2023"));
    sheet.getLineEdit()->selectAll();
    acceptOnlyFolderNames(&sheet);
    KovaMask::createMask(&sheet, window(), KovaMask::dimColor, KovaMask::DeleteWhenEmpty);
    const int code = sheet.exec();
    report(
        tr("The sheet returned %1; the text is \"%2\".").arg(resultText(code), sheet.getContent()));
}

void InputPage::restart()
{
    KovaCountdownMessageBox box(seconds, window());
    box.setWindowTitle(tr("Home backup"));
    box.setIcon(QMessageBox::Information);
    box.setText(tr("The computer restarts to finish the update."));
    box.setEscapeButton(box.button(QMessageBox::Discard));
    report(tr("The box returned %1.").arg(resultText(box.exec())));
}
