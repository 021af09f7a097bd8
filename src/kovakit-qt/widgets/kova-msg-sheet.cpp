#include "kova-msg-sheet_p.h"

#include "kovakit-qt/modality/sheet-buttons_p.h"

#include <kovakit-qt/widgets/message-label.h>

#include <QDialogButtonBox>
#include <QEvent>
#include <QKeyEvent>
#include <QPushButton>

KovaMessageSheet::KovaMessageSheet(MessageType type, QWidget *parent)
    : KovaSheet(parent)
    , d(new KovaMessageSheetPrivate(this))
{
    d->messageType = type;
    d->initialize();
}

KovaMessageSheet::KovaMessageSheet(MessageType type, const QString &text, QWidget *parent)
    : KovaMessageSheet(type, parent)
{
    setText(text);
}

KovaMessageSheet::KovaMessageSheet(MessageType type, const QString &text,
                                   const QString &informativeText, QWidget *parent)
    : KovaMessageSheet(type, text, parent)
{
    setInformativeText(informativeText);
}

KovaMessageSheet::KovaMessageSheet(MessageType type, const QString &text,
                                   const MsgBoxCustomBtnText &buttonText, QWidget *parent)
    : KovaSheet(parent)
    , d(new KovaMessageSheetPrivate(this))
{
    d->messageType = type;
    d->initialize(buttonText);
    setText(text);
}

KovaMessageSheet::KovaMessageSheet(const QString &text, const QString &movieFile, QWidget *parent)
    : KovaMessageSheet(Animation, parent)
{
    d->setMovie(movieFile);
    setText(text);
}

// The modality has to be undone while the sheet is still a sheet.
KovaMessageSheet::~KovaMessageSheet()
{
    delete d;
}

void KovaMessageSheet::setText(const QString &text)
{
    d->setText(text);
}

void KovaMessageSheet::setInformativeText(const QString &text)
{
    d->setInformativeText(text);
}

void KovaMessageSheet::setIcon(const QPixmap &pixmap)
{
    d->setIcon(pixmap);
}

void KovaMessageSheet::setMessageType(MessageType type)
{
    d->messageType = type;
    d->initialize();
}

QAbstractButton *KovaMessageSheet::button(QMessageBox::StandardButton which) const
{
    return d->buttonBox->button(QDialogButtonBox::StandardButton(which));
}

void KovaMessageSheet::setDefaultButton(QPushButton *button)
{
    if (button)
        makeDefaultButton(button);
}

void KovaMessageSheet::setBlockWindowButton(bool block)
{
    blockWindowButton = block;
}

int KovaMessageSheet::exec()
{
    return d->modality.exec(blockWindowButton, d->textLabel, Qt::TabFocusReason);
}

void KovaMessageSheet::showSheet()
{
    d->modality.begin(false);
}

void KovaMessageSheet::showSheetWithBlock()
{
    d->modality.begin(blockWindowButton);
}

void KovaMessageSheet::done(int ret)
{
    d->modality.finish(ret);
}

void KovaMessageSheet::quit()
{
    done(0);
}

void KovaMessageSheet::buttonClick(QAbstractButton *which)
{
    done(d->buttonBox->standardButton(which));
}

void KovaMessageSheet::showEvent(QShowEvent *event)
{
    d->setFocusPolicies();
    KovaSheet::showEvent(event);
    d->startMovie();
}

void KovaMessageSheet::hideEvent(QHideEvent *event)
{
    d->stopMovie();
    KovaSheet::hideEvent(event);
}

bool KovaMessageSheet::focusNextPrevChild(bool next)
{
    return d->modality.moveFocus(next);
}

bool KovaMessageSheet::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && watched == window()) {
        if (!isVisible())
            return false;
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (d->modality.isTopmost() && (key == Qt::Key_Tab || key == Qt::Key_Backtab))
            return d->modality.moveFocus(key == Qt::Key_Tab);
    }
    return d->modality.filterWindow(watched, event, blockWindowButton, d->buttonBox);
}
