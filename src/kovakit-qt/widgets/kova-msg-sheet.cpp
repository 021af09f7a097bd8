// SPDX-License-Identifier: MIT

#include "kova-msg-sheet.h"

#include "sheet-callbacks_p.h"

#include "kovakit-qt/modality/severity_p.h"
#include "kovakit-qt/modality/sheet-buttons_p.h"
#include "kovakit-qt/modality/sheet-core_p.h"
#include "kovakit-qt/utils/component-strings_p.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/message-label.h>

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMetaMethod>
#include <QMovie>
#include <QPixmap>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>

// Builds and lays out the widgets of a message sheet.
class KovaMessageSheetPrivate : public QObject
{
public:
    explicit KovaMessageSheetPrivate(KovaMessageSheet *sheet);

    void initialize(const MsgBoxCustomBtnText &buttonText = {});
    void setText(const QString &text);
    void setInformativeText(const QString &text);
    void setMovie(const QString &movieFile);
    void setIcon(const QPixmap &pixmap);
    void setIcon(QMessageBox::Icon icon);

    void startMovie();
    void stopMovie();
    void setFocusPolicies();

    KovaMessageSheet *q;
    MessageLabel *textLabel;
    MessageLabel *informativeLabel = nullptr;
    QLabel *iconLabel;
    int messageType = KovaMessageSheet::Processing;
    SheetCore core;

private:
    void setUpIcon();
    void setUpButtons(const MsgBoxCustomBtnText &buttonText);
    void setUpTextLabel(MessageLabel *label, const char *styleKey);
    void setUpLayout();
    void setCompact(bool compact);
    [[nodiscard]] bool hasIcon() const;
    [[nodiscard]] int getPreferredWidth() const;
};

namespace {

struct TypeTraits
{
    const char *picture;
    QMessageBox::Icon severity;
    QDialogButtonBox::StandardButtons buttons;
};

TypeTraits traitsOf(int type)
{
    const QDialogButtonBox::StandardButtons both = acceptButton | secondButton;
    switch (type) {
    case KovaMessageSheet::Processing:
        return {"app_img", QMessageBox::NoIcon, QDialogButtonBox::NoButton};
    case KovaMessageSheet::Information:
        return {"icon_information", QMessageBox::Information, acceptButton};
    case KovaMessageSheet::Warning:
        return {"icon_warning", QMessageBox::Warning, acceptButton};
    case KovaMessageSheet::Question:
        return {"icon_question", QMessageBox::Question, both};
    case KovaMessageSheet::Upgrade:
        return {"icon_information", QMessageBox::Information, both};
    case KovaMessageSheet::WarningQuestion:
        return {"icon_warning", QMessageBox::Warning, both};
    default:
        return {nullptr, QMessageBox::NoIcon, QDialogButtonBox::NoButton};
    }
}

// A movie that is nobody's child, because a host may show it in a label of its own, which may
// outlive the sheet's.
class SheetMovie : public QMovie
{
public:
    using QMovie::QMovie;

    void leave()
    {
        if (!isSignalConnected(QMetaMethod::fromSignal(&QMovie::updated)))
            deleteLater();
    }
};

} // namespace

KovaMessageSheetPrivate::KovaMessageSheetPrivate(KovaMessageSheet *sheet)
    : QObject(sheet)
    , q(sheet)
    , textLabel(new MessageLabel(sheet))
    , iconLabel(new QLabel(sheet))
    , core(sheet, modalityCallbacks(sheet),
           {[this] { return kovaPx(getPreferredWidth()); },
            [sheet] { return marginsOfMask(sheet); },
            [this](bool compact) { setCompact(compact); }})
{
}

// The styles of the containers come first: a widget's rules are worked out anew whenever those
// around it change, and a button asks for its icon, or none, when it is created.
void KovaMessageSheetPrivate::initialize(const MsgBoxCustomBtnText &buttonText)
{
    const bool processing =
        messageType == KovaMessageSheet::Processing || messageType == KovaMessageSheet::Animation;
    q->setStyleSheet(getStyleSheet(processing ? "component.message_sheet_processing"
                                              : "component.message_sheet_other",
                                   false));
    orderButtons(core.buttonBox);
    connect(core.buttonBox, &QDialogButtonBox::clicked, q, &KovaMessageSheet::buttonClick);

    setUpIcon();
    setUpButtons(buttonText);
    setUpTextLabel(textLabel, "component.message_sheet_text");
    if (informativeLabel)
        setUpTextLabel(informativeLabel, "component.message_sheet_informative_text");
    for (QAbstractButton *button : core.buttonBox->buttons())
        button->installEventFilter(q);
    setUpLayout();
}

void KovaMessageSheetPrivate::setUpIcon()
{
    const TypeTraits traits = traitsOf(messageType);
    if (traits.picture)
        iconLabel->setPixmap(getGlobalImage(traits.picture, ImageManager::Default));
    iconLabel->setAccessibleName(severityName(traits.severity));
}

void KovaMessageSheetPrivate::setUpButtons(const MsgBoxCustomBtnText &buttonText)
{
    const QDialogButtonBox::StandardButtons buttons = traitsOf(messageType).buttons;
    core.buttonBox->setStandardButtons(buttons);

    const auto setSize = [](QPushButton *button, int minimumWidth) {
        button->setFixedHeight(kovaPx(28));
        button->setMinimumWidth(kovaPx(minimumWidth));
    };
    if (buttons & acceptButton) {
        const char *key = messageType == KovaMessageSheet::Upgrade ? "wizard_client_upgrade" : "ok";
        dressOkButton(core.buttonBox,
                      buttonText.okText.isEmpty() ? componentString(key) : buttonText.okText);
        setSize(core.buttonBox->button(acceptButton), 120);
    }
    if (buttons & secondButton) {
        dressSecondButton(core.buttonBox, buttonText.cancelText.isEmpty()
                                              ? componentString("cancel")
                                              : buttonText.cancelText);
        setSize(core.buttonBox->button(secondButton), 80);
    }
}

void KovaMessageSheetPrivate::setUpTextLabel(MessageLabel *label, const char *styleKey)
{
    label->installEventFilter(q);
    label->setStyleSheet(getStyleSheet(styleKey, false));
}

void KovaMessageSheetPrivate::setText(const QString &text)
{
    textLabel->setText(sheetParagraph(text, 24));
    textLabel->setWordWrap(true);
    textLabel->setAlignment(Qt::AlignTop);
    textLabel->setFocusPolicy(Qt::StrongFocus);
    textLabel->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse
                                       | Qt::LinksAccessibleByKeyboard);
    textLabel->setOpenExternalLinks(true);
    textLabel->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Maximum);
    setUpLayout();
}

void KovaMessageSheetPrivate::setInformativeText(const QString &text)
{
    if (text.isEmpty()) {
        if (informativeLabel) {
            informativeLabel->hide();
            informativeLabel->deleteLater();
            informativeLabel = nullptr;
        }
    } else {
        if (!informativeLabel) {
            informativeLabel = new MessageLabel(q);
            const int hint =
                q->style()->styleHint(QStyle::SH_MessageBox_TextInteractionFlags, nullptr, q);
            informativeLabel->setTextInteractionFlags(Qt::TextInteractionFlags(hint)
                                                      | Qt::LinksAccessibleByKeyboard);
            informativeLabel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
            informativeLabel->setOpenExternalLinks(true);
            informativeLabel->setWordWrap(true);
            informativeLabel->setFocusPolicy(Qt::StrongFocus);
            informativeLabel->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Maximum);
            setUpTextLabel(informativeLabel, "component.message_sheet_informative_text");
        }
        informativeLabel->setText(sheetParagraph(text, 20));
    }
    setUpLayout();
}

void KovaMessageSheetPrivate::setMovie(const QString &movieFile)
{
    auto *movie = new SheetMovie(movieFile);
    connect(iconLabel, &QObject::destroyed, movie, &SheetMovie::leave);
    const int side = kovaPxRounded(32);
    movie->setScaledSize(QSize(side, side));
    iconLabel->setMovie(movie);
}

void KovaMessageSheetPrivate::setIcon(const QPixmap &pixmap)
{
    iconLabel->setPixmap(pixmap);
    setUpLayout();
}

void KovaMessageSheetPrivate::setIcon(QMessageBox::Icon icon)
{
    const QPixmap pixmap = QMessageBox::standardIcon(icon);
    iconLabel->setPixmap(pixmap.scaled(kovaPxRounded(pixmap.width()),
                                       kovaPxRounded(pixmap.height()), Qt::KeepAspectRatio,
                                       Qt::SmoothTransformation));
}

void KovaMessageSheetPrivate::setUpLayout()
{
    core.fit.leaveLayout();
    delete q->layout();
    auto *main = new QVBoxLayout(q);
    main->setSpacing(0);

    // A QHBoxLayout leaves the space out when the icon is hidden.
    auto *row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kovaPx(20));
    iconLabel->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
    row->addWidget(iconLabel, 0, Qt::AlignTop);
    QVector<QWidget *> texts{textLabel};
    if (informativeLabel)
        texts.append(informativeLabel);
    row->addLayout(core.fit.makeTextColumn(texts, kovaPx(6)));

    main->addLayout(row);
    core.fit.addButtons(main, kovaPx(20));
    setCompact(false);
    core.fit.start();
}

bool KovaMessageSheetPrivate::hasIcon() const
{
    return !iconLabel->pixmap(Qt::ReturnByValue).isNull() || iconLabel->movie();
}

void KovaMessageSheetPrivate::setCompact(bool compact)
{
    const int side = kovaPx(compact ? 4 : 20);
    q->layout()->setContentsMargins(side, side, side, kovaPx(compact ? 4 : 10));
    iconLabel->setVisible(hasIcon() && !compact);
}

int KovaMessageSheetPrivate::getPreferredWidth() const
{
    constexpr double widest = 540;
    const QWidget *parent = core.fit.owner();
    const double available = parent ? parent->width() / DPIinfo::getInstance()->getDPI() : 0;
    if (!parent || available - 40 > widest)
        return int(widest);
    // At this very width the sheet is narrower than the rule around it says; hosts rely on it.
    if (qFuzzyCompare(available, widest))
        return 480;
    return int(std::max(0.0, available - 40));
}

void KovaMessageSheetPrivate::startMovie()
{
    QMovie *movie = iconLabel->movie();
    if (messageType == KovaMessageSheet::Animation && movie && movie->isValid())
        movie->start();
}

void KovaMessageSheetPrivate::stopMovie()
{
    if (QMovie *movie = iconLabel->movie())
        movie->stop();
}

void KovaMessageSheetPrivate::setFocusPolicies()
{
    core.buttonBox->setFocusPolicy(Qt::NoFocus);
    for (QAbstractButton *button : core.buttonBox->buttons())
        button->setFocusPolicy(Qt::StrongFocus);
}

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

KovaMessageSheet::~KovaMessageSheet()
{
    d->core.end();
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
    return d->core.button(which);
}

void KovaMessageSheet::setDefaultButton(QPushButton *button)
{
    setAsDefault(button);
}

void KovaMessageSheet::setBlockWindowButton(bool block)
{
    d->core.setBlockWindowButton(block);
}

int KovaMessageSheet::exec()
{
    return d->core.exec(d->textLabel, Qt::TabFocusReason);
}

void KovaMessageSheet::showSheet()
{
    d->core.show();
}

void KovaMessageSheet::showSheetWithBlock()
{
    d->core.showWithBlock();
}

void KovaMessageSheet::done(int ret)
{
    d->core.finish(ret);
}

void KovaMessageSheet::quit()
{
    done(0);
}

void KovaMessageSheet::buttonClick(QAbstractButton *which)
{
    done(d->core.codeOf(which));
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
    return d->core.moveFocus(next);
}

bool KovaMessageSheet::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && watched == window()) {
        if (!isVisible())
            return false;
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (d->core.isTopmost() && (key == Qt::Key_Tab || key == Qt::Key_Backtab))
            return d->core.moveFocus(key == Qt::Key_Tab);
    }
    return d->core.filterWindow(watched, event);
}
