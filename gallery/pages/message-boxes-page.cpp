// SPDX-License-Identifier: MIT

#include "message-boxes-page.h"

#include "page-widgets.h"
#include "result-text.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-msg-box.h>

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace {

QString title()
{
    return GalleryPage::tr("Home backup");
}

QString noResult()
{
    return GalleryPage::tr("The message was closed. This function returns nothing.");
}

QString result(int code)
{
    return GalleryPage::tr("The function returned %1.").arg(resultText(code));
}

QString callInfo(QWidget *parent)
{
    showInfoMsg(title(), GalleryPage::tr("The backup task was saved."), parent);
    return noResult();
}

QString callWarning(QWidget *parent)
{
    showWarningMsg(title(), GalleryPage::tr("The server cannot be reached."), parent);
    return noResult();
}

QString callInformativeWarning(QWidget *parent)
{
    showWarningMsg(title(), GalleryPage::tr("The password is wrong."),
                   GalleryPage::tr("After three more attempts the account is locked for an hour."),
                   parent);
    return noResult();
}

QString callConfirm(QWidget *parent)
{
    return result(showConfirmMsg(
        title(), GalleryPage::tr("Pause all synchronization tasks until tomorrow?"), parent));
}

QString callCustomConfirm(QWidget *parent)
{
    MsgBoxCustomBtnText texts;
    texts.okText = GalleryPage::tr("Sign out");
    texts.cancelText = GalleryPage::tr("Stay signed in");
    return result(showConfirmMsgCustomBtn(
        title(), GalleryPage::tr("Sign out of this account? Files on this computer are kept."),
        texts, parent));
}

QString callUpgrading(QWidget *parent)
{
    showUpgradingMsg(title(),
                     GalleryPage::tr("The server was upgraded. This program has to be upgraded too "
                                     "before it can connect."),
                     parent);
    return noResult();
}

} // namespace

MessageBoxesPage::MessageBoxesPage()
{
    auto *card = new Card(tr("Six functions, two forms each"),
                          tr("With a parent widget the message opens in the window, without one "
                             "as a window of its own. \"No\" has a different code in each form: "
                             "test the answer for QMessageBox::Ok only."));
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(kovaPx(12));
    grid->setVerticalSpacing(kovaPx(10));
    grid->setColumnStretch(0, 1);
    addFunction(grid, QStringLiteral("info"), QStringLiteral("showInfoMsg"), callInfo);
    addFunction(grid, QStringLiteral("warning"), QStringLiteral("showWarningMsg"), callWarning);
    addFunction(grid, QStringLiteral("informative-warning"),
                tr("showWarningMsg, with an informative text"), callInformativeWarning);
    addFunction(grid, QStringLiteral("confirm"), QStringLiteral("showConfirmMsg"), callConfirm);
    addFunction(grid, QStringLiteral("custom-confirm"), QStringLiteral("showConfirmMsgCustomBtn"),
                callCustomConfirm);
    addFunction(grid, QStringLiteral("upgrading"), QStringLiteral("showUpgradingMsg"),
                callUpgrading);
    card->add(grid);
    add(card);
}

void MessageBoxesPage::addFunction(QGridLayout *grid, const QString &sceneName,
                                   const QString &function, QString (*call)(QWidget *parent))
{
    const auto inWindow = [this, call] { report(call(window())); };
    const auto alone = [this, call] { report(call(nullptr)); };
    auto *inWindowButton = new KovaButton(tr("In the window"), KovaButton::Standard);
    inWindowButton->setAccessibleDescription(function);
    auto *aloneButton = new KovaButton(tr("On its own"), KovaButton::Standard);
    aloneButton->setAccessibleDescription(function);
    connect(inWindowButton, &QPushButton::clicked, this, inWindow);
    connect(aloneButton, &QPushButton::clicked, this, alone);
    addScene(sceneName, inWindow);
    addScene(sceneName + QLatin1String("-alone"), alone);

    const int row = grid->rowCount();
    grid->addWidget(makeRowLabel(function), row, 0);
    grid->addWidget(inWindowButton, row, 1);
    grid->addWidget(aloneButton, row, 2);
}
