#include "kova-countdown-msg-box.h"

#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/component-strings.h>

#include <QPushButton>
#include <QShowEvent>

KovaCountdownMessageBox::KovaCountdownMessageBox(int seconds, QWidget *parent)
    : QMessageBox(parent)
    , count(seconds)
{
    connect(&timer, &QTimer::timeout, this, &KovaCountdownMessageBox::slotTick);
    timer.setInterval(1000);
    setStandardButtons(Ok | Discard);
    setStyleSheet(getStyleSheet("component.info_message_box", false));
    button(Ok)->setStyleSheet(getStyleSheet("component.apply_button", false));
    button(Discard)->setStyleSheet(getStyleSheet("component.cancel_button", false));
    button(Discard)->setText(ComponentStrings::getInstance()->getString(QStringLiteral("cancel")));
    setDefaultButton(Ok);
    updateButtonText();
}

void KovaCountdownMessageBox::updateButtonText()
{
    // The caller may have removed the button.
    if (QAbstractButton *ok = button(Ok)) {
        ok->setText(QStringLiteral("%1(%2)").arg(
            ComponentStrings::getInstance()->getString(QStringLiteral("ok")),
            QString::number(count)));
    }
}

void KovaCountdownMessageBox::slotTick()
{
    count = count > 0 ? count - 1 : -1;
    if (count >= 0) {
        updateButtonText();
        return;
    }
    timer.stop();
    // A button that was deleted is still named as the default one, but no longer in the list.
    QPushButton *button = defaultButton();
    if (buttons().contains(button))
        button->animateClick(100);
}

void KovaCountdownMessageBox::showEvent(QShowEvent *event)
{
    QMessageBox::showEvent(event);
    // The window system shows a box again that was minimised: no reason to count faster.
    if (event->spontaneous())
        return;
    slotTick();
    if (count >= 0)
        timer.start();
}
