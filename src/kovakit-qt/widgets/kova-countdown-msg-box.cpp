// SPDX-License-Identifier: MIT

#include "kova-countdown-msg-box.h"

#include "kovakit-qt/modality/severity_p.h"
#include "kovakit-qt/modality/sheet-buttons_p.h"
#include "kovakit-qt/utils/component-strings_p.h"

#include <kovakit-qt/style/style-manager.h>

#include <QAbstractButton>
#include <QCloseEvent>
#include <QPointer>
#include <QPushButton>
#include <QShowEvent>
#include <QTimer>

class KovaCountdownMessageBox::Private
{
public:
    [[nodiscard]] QString okText() const
    {
        return QStringLiteral("%1(%2)").arg(componentString("ok"), QString::number(count));
    }

    QTimer timer;
    int count = 0;
};

KovaCountdownMessageBox::KovaCountdownMessageBox(int seconds, QWidget *parent)
    : QMessageBox(parent)
    , d(new Private)
{
    d->count = seconds;
    connect(&d->timer, &QTimer::timeout, this, &KovaCountdownMessageBox::slotTick);
    d->timer.setInterval(1000);
    setStandardButtons(Ok | Discard);
    setStyleSheet(getStyleSheet("component.info_message_box", false));
    dressButton(button(Ok), d->okText(), "component.apply_button");
    dressButton(button(Discard), componentString("cancel"), "component.cancel_button");
    setDefaultButton(Ok);
    setEscapeButton(Discard);
}

KovaCountdownMessageBox::~KovaCountdownMessageBox() = default;

void KovaCountdownMessageBox::updateButtonText()
{
    // The caller may have removed the button.
    if (QAbstractButton *ok = button(Ok))
        ok->setText(d->okText());
}

void KovaCountdownMessageBox::slotTick()
{
    d->count = d->count > 0 ? d->count - 1 : -1;
    if (d->count >= 0) {
        updateButtonText();
        return;
    }
    d->timer.stop();
    // A button that was deleted is still named as the default one, but no longer in the list.
    QPushButton *button = defaultButton();
    if (buttons().contains(button))
        button->animateClick(100);
}

void KovaCountdownMessageBox::showEvent(QShowEvent *event)
{
    QMessageBox::showEvent(event);
    // Under a parent with a style sheet the box gets its own style only now; QMessageBox made the
    // icon with the style before.
    if (icon() != NoIcon)
        setIcon(icon());
    nameIcon(this);
    // When the window system shows a minimised box again, the count must not go faster.
    if (event->spontaneous())
        return;
    slotTick();
    if (d->count >= 0)
        d->timer.start();
}

// QMessageBox would end exec() with the right code, but emit finished() with another one.
void KovaCountdownMessageBox::closeEvent(QCloseEvent *event)
{
    QAbstractButton *escape = escapeButton();
    if (!isVisible() || !buttons().contains(escape)) {
        QMessageBox::closeEvent(event);
        return;
    }
    const QPointer<KovaCountdownMessageBox> self(this);
    escape->click();
    event->setAccepted(!self || !isVisible());
}
