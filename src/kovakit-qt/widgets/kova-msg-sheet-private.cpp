#include "kova-msg-sheet_p.h"
#include "sheet-callbacks_p.h"

#include "kovakit-qt/modality/sheet-buttons_p.h"
#include "kovakit-qt/utils/component-strings_p.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/message-label.h>

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMetaMethod>
#include <QMovie>
#include <QPushButton>
#include <QStyle>

#include <cmath>

namespace {

struct TypeTraits
{
    const char *icon;
    QDialogButtonBox::StandardButtons buttons;
};

TypeTraits traitsOf(int type)
{
    const QDialogButtonBox::StandardButtons both = QDialogButtonBox::Ok | QDialogButtonBox::Discard;
    switch (type) {
    case KovaMessageSheet::Processing:
        return {"app_img", QDialogButtonBox::NoButton};
    case KovaMessageSheet::Information:
        return {"icon_information", QDialogButtonBox::Ok};
    case KovaMessageSheet::Warning:
        return {"icon_warning", QDialogButtonBox::Ok};
    case KovaMessageSheet::Question:
        return {"icon_question", both};
    case KovaMessageSheet::Upgrade:
        return {"icon_information", both};
    case KovaMessageSheet::WarningQuestion:
        return {"icon_warning", both};
    default:
        return {nullptr, QDialogButtonBox::NoButton};
    }
}

// Nobody's child: it outlives the label that it was made for if another one shows it too.
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
    , buttonBox(newButtonBox(sheet))
    , modality(sheet, modalityCallbacks(sheet))
    , fit(sheet, buttonBox,
          {[this] { return kovaPx(getPreferredWidth()); }, [sheet] { return marginsOfMask(sheet); },
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
    orderButtons(buttonBox);
    connect(buttonBox, &QDialogButtonBox::clicked, q, &KovaMessageSheet::buttonClick);

    setupIcon();
    setupButtons(buttonText);
    setupTextLabel(textLabel, "component.message_sheet_text");
    if (informativeLabel)
        setupTextLabel(informativeLabel, "component.message_sheet_informative_text");
    for (QAbstractButton *button : buttonBox->buttons())
        button->installEventFilter(q);
    setupLayout();
}

void KovaMessageSheetPrivate::setupIcon()
{
    if (const char *icon = traitsOf(messageType).icon)
        iconLabel->setPixmap(getGlobalImage(icon, ImageManager::Default));
}

void KovaMessageSheetPrivate::setupButtons(const MsgBoxCustomBtnText &buttonText)
{
    const QDialogButtonBox::StandardButtons buttons = traitsOf(messageType).buttons;
    buttonBox->setStandardButtons(buttons);

    const auto setSize = [](QPushButton *button, int minimumWidth) {
        button->setFixedHeight(kovaPx(28));
        button->setMinimumWidth(kovaPx(minimumWidth));
    };
    if (buttons & QDialogButtonBox::Ok) {
        const char *key = messageType == KovaMessageSheet::Upgrade ? "wizard_client_upgrade" : "ok";
        dressOkButton(buttonBox,
                      buttonText.okText.isEmpty() ? componentString(key) : buttonText.okText);
        setSize(buttonBox->button(QDialogButtonBox::Ok), 120);
    }
    if (buttons & QDialogButtonBox::Discard) {
        dressSecondButton(buttonBox, buttonText.cancelText.isEmpty() ? componentString("cancel")
                                                                     : buttonText.cancelText);
        setSize(buttonBox->button(QDialogButtonBox::Discard), 80);
    }
}

void KovaMessageSheetPrivate::setupTextLabel(MessageLabel *label, const char *styleKey)
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
    setupLayout();
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
            informativeLabel->setTextInteractionFlags(Qt::TextInteractionFlags(
                q->style()->styleHint(QStyle::SH_MessageBox_TextInteractionFlags, nullptr, q)));
            informativeLabel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
            informativeLabel->setOpenExternalLinks(true);
            informativeLabel->setWordWrap(true);
            informativeLabel->setFocusPolicy(Qt::StrongFocus);
            informativeLabel->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Maximum);
            setupTextLabel(informativeLabel, "component.message_sheet_informative_text");
        }
        informativeLabel->setText(sheetParagraph(text, 20));
    }
    setupLayout();
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
    setupLayout();
}

void KovaMessageSheetPrivate::setIcon(QMessageBox::Icon icon)
{
    const QPixmap pixmap = QMessageBox::standardIcon(icon);
    iconLabel->setPixmap(pixmap.scaled(kovaPxRounded(pixmap.width()),
                                       kovaPxRounded(pixmap.height()), Qt::KeepAspectRatio,
                                       Qt::SmoothTransformation));
}

void KovaMessageSheetPrivate::setupLayout()
{
    fit.leaveLayout();
    delete q->layout();
    auto *main = new QVBoxLayout(q);
    main->setSpacing(0);

    // The space between them goes with the icon.
    auto *row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kovaPx(20));
    iconLabel->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
    row->addWidget(iconLabel, 0, Qt::AlignTop);
    QVector<QWidget *> texts{textLabel};
    if (informativeLabel)
        texts.append(informativeLabel);
    row->addLayout(fit.newTextColumn(texts, kovaPx(6)));

    main->addLayout(row);
    fit.addButtons(main, kovaPx(20));
    setCompact(false);
    fit.start();
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
    const QWidget *parent = fit.owner();
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
    buttonBox->setFocusPolicy(Qt::NoFocus);
    for (QAbstractButton *button : buttonBox->buttons())
        button->setFocusPolicy(Qt::StrongFocus);
}
