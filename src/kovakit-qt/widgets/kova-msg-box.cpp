// SPDX-License-Identifier: MIT

#include "kova-msg-box.h"

#include "kovakit-qt/modality/severity_p.h"
#include "kovakit-qt/modality/sheet-buttons_p.h"
#include "kovakit-qt/utils/component-strings_p.h"

#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/kova-mask.h>

#include <QMessageBox>

namespace {

// A sheet in a window that is not on the screen would wait for an answer that nobody can give.
bool canCarrySheet(const QWidget *parent)
{
    return parent && parent->window()->isVisible();
}

int execSheet(KovaMessageSheet &sheet, const QWidget *parent)
{
    KovaMask::createMask(&sheet, parent->window(), KovaMask::dimColor);
    return sheet.exec();
}

struct Box
{
    QMessageBox::Icon icon;
    QMessageBox::StandardButtons buttons;
    const char *styleKey;
};

int execBox(const Box &kind, const QString &title, const QString &text,
            const QString &informativeText = QString(), const MsgBoxCustomBtnText &buttonText = {})
{
    QMessageBox box;
    box.setIcon(kind.icon);
    nameIcon(&box);
    box.setWindowTitle(title);
    box.setText(text);
    box.setInformativeText(informativeText);
    box.setStandardButtons(kind.buttons);
    box.setStyleSheet(getStyleSheet(kind.styleKey, false));
    const auto textOr = [](const QString &custom, const char *key) {
        return custom.isEmpty() ? componentString(key) : custom;
    };
    dressButton(box.button(QMessageBox::Ok), textOr(buttonText.okText, "ok"),
                "component.apply_button");
    if (QAbstractButton *cancel = box.button(QMessageBox::Cancel))
        dressButton(cancel, textOr(buttonText.cancelText, "cancel"), "component.cancel_button");
    return box.exec();
}

} // namespace

void showInfoMsg(const QString &title, const QString &text, QWidget *parent)
{
    if (canCarrySheet(parent)) {
        KovaMessageSheet sheet(KovaMessageSheet::Information, text, parent);
        execSheet(sheet, parent);
    } else {
        execBox({QMessageBox::Information, QMessageBox::Ok, "component.info_message_box"}, title,
                text);
    }
}

void showWarningMsg(const QString &title, const QString &text, QWidget *parent)
{
    showWarningMsg(title, text, QString(), parent);
}

void showWarningMsg(const QString &title, const QString &text, const QString &informativeText,
                    QWidget *parent)
{
    if (canCarrySheet(parent)) {
        KovaMessageSheet sheet(KovaMessageSheet::Warning, text, informativeText, parent);
        execSheet(sheet, parent);
    } else {
        execBox({QMessageBox::Warning, QMessageBox::Ok, "component.warning_message_box"}, title,
                text, informativeText);
    }
}

int showConfirmMsg(const QString &title, const QString &text, QWidget *parent)
{
    return showConfirmMsgCustomBtn(title, text, {}, parent);
}

int showConfirmMsgCustomBtn(const QString &title, const QString &text,
                            const MsgBoxCustomBtnText &buttonText, QWidget *parent)
{
    if (canCarrySheet(parent)) {
        KovaMessageSheet sheet(KovaMessageSheet::Question, text, buttonText, parent);
        return execSheet(sheet, parent);
    }
    return execBox({QMessageBox::Question, QMessageBox::Ok | QMessageBox::Cancel,
                    "component.confirm_message_box"},
                   title, text, QString(), buttonText);
}

void showUpgradingMsg(const QString &title, const QString &text, QWidget *parent)
{
    if (canCarrySheet(parent)) {
        KovaMessageSheet sheet(KovaMessageSheet::Upgrade, text, parent);
        execSheet(sheet, parent);
    } else {
        execBox({QMessageBox::Warning, QMessageBox::Ok, "component.upgrading_message_box"}, title,
                text);
    }
}
