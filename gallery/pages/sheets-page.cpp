// SPDX-License-Identifier: MIT

#include "sheets-page.h"

#include "page-widgets.h"
#include "result-text.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-mask.h>
#include <kovakit-qt/widgets/kova-msg-sheet.h>

#include <QPushButton>
#include <QTimer>

namespace {

constexpr int buttonWidth = 180;
constexpr int jobMilliseconds = 2000;

} // namespace

SheetsPage::SheetsPage()
{
    add(makeTypes());
    add(makeVariants());
}

Card *SheetsPage::makeTypes()
{
    auto *card = new Card(tr("The seven types"));
    addSheet(card, QStringLiteral("processing"), tr("Processing"),
             tr("No buttons; ends after two seconds."), &SheetsPage::openProcessing);
    addSheet(card, QStringLiteral("information"), tr("Information"),
             tr("One button; Escape does nothing."), &SheetsPage::openInformation);
    addSheet(card, QStringLiteral("warning"), tr("Warning"), tr("One button and the warning icon."),
             &SheetsPage::openWarning);
    addSheet(card, QStringLiteral("question"), tr("Question"),
             tr("Return accepts, Escape declines."), &SheetsPage::openQuestion);
    addSheet(card, QStringLiteral("upgrade"), tr("Upgrade"), tr("Offers a newer version."),
             &SheetsPage::openUpgrade);
    addSheet(card, QStringLiteral("warning-question"), tr("Warning question"),
             tr("A question that can do harm."), &SheetsPage::openWarningQuestion);
    addSheet(card, QStringLiteral("animation"), tr("Animation"),
             tr("A moving picture; ends after two seconds."), &SheetsPage::openAnimation);
    return card;
}

Card *SheetsPage::makeVariants()
{
    auto *card = new Card(tr("Variants"));
    addSheet(card, QStringLiteral("informative"), tr("Two texts"),
             tr("With an informative text below."), &SheetsPage::openInformative);
    addSheet(card, QStringLiteral("custom-buttons"), tr("Own button texts"),
             tr("The buttons say what they do."), &SheetsPage::openCustomButtons);
    addSheet(card, QStringLiteral("long-text"), tr("Long text"),
             tr("Grows in height, not in width."), &SheetsPage::openLongText);
    addSheet(card, QStringLiteral("closeable"), tr("Window can close"),
             tr("The close button of the window stays alive."), &SheetsPage::openCloseable);
    return card;
}

void SheetsPage::addSheet(Card *card, const QString &sceneName, const QString &label,
                          const QString &explanation, void (SheetsPage::*open)())
{
    auto *button = new KovaButton(label, KovaButton::Standard);
    connect(button, &QPushButton::clicked, this, open);
    card->addExplained(button, explanation, buttonWidth);
    addScene(sceneName, [this, open] { (this->*open)(); });
}

void SheetsPage::run(KovaMessageSheet &sheet)
{
    KovaMask::createMask(&sheet, window(), KovaMask::dimColor, KovaMask::DeleteWhenEmpty);
    report(tr("The sheet returned %1.").arg(resultText(sheet.exec())));
}

void SheetsPage::runJob(KovaMessageSheet &sheet)
{
    QTimer::singleShot(jobMilliseconds, &sheet, &KovaMessageSheet::quit);
    run(sheet);
}

void SheetsPage::openProcessing()
{
    KovaMessageSheet sheet(KovaMessageSheet::Processing, tr("Connecting to the backup server…"),
                           window());
    runJob(sheet);
}

void SheetsPage::openInformation()
{
    KovaMessageSheet sheet(KovaMessageSheet::Information,
                           tr("The backup is complete. 1,284 files were copied."), window());
    run(sheet);
}

void SheetsPage::openWarning()
{
    KovaMessageSheet sheet(KovaMessageSheet::Warning, tr("The backup drive is almost full."),
                           window());
    run(sheet);
}

void SheetsPage::openQuestion()
{
    KovaMessageSheet sheet(KovaMessageSheet::Question,
                           tr("Restore \"Budget 2024.ods\" to the version of Monday "
                              "evening?"),
                           window());
    run(sheet);
}

void SheetsPage::openUpgrade()
{
    KovaMessageSheet sheet(KovaMessageSheet::Upgrade,
                           tr("A newer version of this program is available. Running "
                              "tasks are resumed afterwards."),
                           window());
    run(sheet);
}

void SheetsPage::openWarningQuestion()
{
    KovaMessageSheet sheet(KovaMessageSheet::WarningQuestion,
                           tr("Stop synchronizing this folder? Files that exist only "
                              "on the server will not be on this computer any more."),
                           window());
    run(sheet);
}

void SheetsPage::openAnimation()
{
    KovaMessageSheet sheet(
        tr("Looking for changed files…"),
        ImageManager::getInstance()->getImageFolder() + QLatin1String("/processing.gif"), window());
    runJob(sheet);
}

void SheetsPage::openInformative()
{
    KovaMessageSheet sheet(
        KovaMessageSheet::Warning, tr("Three files could not be copied."),
        tr("They are open in another program. They will be tried again at the next "
           "backup. See the <a href=\"https://example.com/log\">log</a> for their "
           "names."),
        window());
    run(sheet);
}

void SheetsPage::openCustomButtons()
{
    MsgBoxCustomBtnText texts;
    texts.okText = tr("Delete backup");
    texts.cancelText = tr("Keep it");
    KovaMessageSheet sheet(KovaMessageSheet::Question,
                           tr("Delete the backup of 14 March and all its versions?"), texts,
                           window());
    run(sheet);
}

void SheetsPage::openLongText()
{
    KovaMessageSheet sheet(
        KovaMessageSheet::Information, tr("About versions"),
        tr("Each time a file changes, the backup keeps the version before. Versions of "
           "the last day are all kept, of the last month one for each day, and older "
           "ones one for each week. When the drive is full, the oldest versions of the "
           "largest files are removed first; the newest version of a file is never "
           "removed.<br><br>Versions take less room than you may expect, for only the "
           "parts that changed are stored. A year of daily versions of an ordinary "
           "office folder is about one and a half times as large as the folder itself."
           "<br><br>To keep a version for good, give it a name in the list of "
           "versions."),
        window());
    run(sheet);
}

void SheetsPage::openCloseable()
{
    KovaMessageSheet sheet(KovaMessageSheet::Question,
                           tr("Sign in again to continue with the synchronization?"), window());
    sheet.setBlockWindowButton(false);
    run(sheet);
}
