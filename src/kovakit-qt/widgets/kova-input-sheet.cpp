#include "kova-input-sheet.h"

#include "sheet-callbacks_p.h"

#include "kovakit-qt/modality/sheet-buttons_p.h"
#include "kovakit-qt/modality/sheet-fit_p.h"
#include "kovakit-qt/modality/sheet-modality_p.h"
#include "kovakit-qt/style/placeholder-color_p.h"
#include "kovakit-qt/utils/component-strings_p.h"
#include "kovakit-qt/utils/markup_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/message-label.h>

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

class KovaInputSheetPrivate : public QObject
{
public:
    explicit KovaInputSheetPrivate(KovaInputSheet *sheet);

    void initialize();
    void setText(const QString &text);
    void setupLayout();
    void setCompact(bool compact);
    [[nodiscard]] int getPreferredWidth() const;

    KovaInputSheet *q;
    MessageLabel *textLabel;
    QLineEdit *lineEdit;
    QDialogButtonBox *buttonBox;
    SheetModality modality;
    SheetFit fit;
};

KovaInputSheetPrivate::KovaInputSheetPrivate(KovaInputSheet *sheet)
    : QObject(sheet)
    , q(sheet)
    , textLabel(new MessageLabel(sheet))
    , lineEdit(new QLineEdit(sheet))
    , buttonBox(newButtonBox(sheet))
    , modality(sheet, modalityCallbacks(sheet))
    , fit(sheet, buttonBox,
          {[this] { return kovaPx(getPreferredWidth()); }, [sheet] { return marginsOfMask(sheet); },
           [this](bool compact) { setCompact(compact); }})
{
}

void KovaInputSheetPrivate::initialize()
{
    q->setStyleSheet(getStyleSheet("component.message_sheet_other", false));
    orderButtons(buttonBox);
    connect(buttonBox, &QDialogButtonBox::clicked, q, &KovaInputSheet::buttonClick);
    buttonBox->setStandardButtons(QDialogButtonBox::Ok | QDialogButtonBox::Discard);
    dressOkButton(buttonBox, componentString("ok"));
    dressSecondButton(buttonBox, componentString("cancel"));
    lineEdit->setFixedHeight(kovaPx(28));
    setPlaceholderApart(lineEdit);
    lineEdit->setStyleSheet(getStyleSheet("component.lineedit", false));
    setupLayout();
}

void KovaInputSheetPrivate::setText(const QString &text)
{
    textLabel->setText(sheetParagraph(text, 20));
    textLabel->setWordWrap(true);
    textLabel->setAlignment(Qt::AlignTop);
    textLabel->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Maximum);
    lineEdit->setAccessibleName(withoutMarkup(text));
    setupLayout();
}

void KovaInputSheetPrivate::setupLayout()
{
    fit.leaveLayout();
    delete q->layout();
    auto *main = new QVBoxLayout(q);
    main->setSpacing(0);
    main->addLayout(fit.newTextColumn({textLabel}, 0));
    main->addSpacing(kovaPx(8));
    main->addWidget(lineEdit);
    fit.addButtons(main, kovaPx(24));
    setCompact(false);
    fit.start();
}

void KovaInputSheetPrivate::setCompact(bool compact)
{
    const int margin = kovaPx(compact ? 4 : 10);
    q->layout()->setContentsMargins(margin, margin, margin, margin);
}

int KovaInputSheetPrivate::getPreferredWidth() const
{
    constexpr int widest = 480;
    constexpr int margins = 40;
    const QWidget *parent = fit.owner();
    if (!parent)
        return widest;
    const double available = parent->width() / DPIinfo::getInstance()->getDPI();
    return available < widest + margins ? int(std::max(0.0, available - margins)) : widest;
}

KovaInputSheet::KovaInputSheet(QWidget *parent)
    : KovaSheet(parent)
    , d(new KovaInputSheetPrivate(this))
{
    d->initialize();
}

KovaInputSheet::KovaInputSheet(const QString &text, QWidget *parent)
    : KovaInputSheet(parent)
{
    setText(text);
}

// The modality has to be undone while the sheet is still a sheet.
KovaInputSheet::~KovaInputSheet()
{
    delete d;
}

void KovaInputSheet::setText(const QString &text)
{
    d->setText(text);
}

QLineEdit *KovaInputSheet::getLineEdit()
{
    return d->lineEdit;
}

QString KovaInputSheet::getContent()
{
    return d->lineEdit->text();
}

QAbstractButton *KovaInputSheet::button(QMessageBox::StandardButton which) const
{
    return d->buttonBox->button(QDialogButtonBox::StandardButton(which));
}

void KovaInputSheet::setDefaultButton(QPushButton *button)
{
    if (button)
        makeDefaultButton(button);
}

void KovaInputSheet::setBlockWindowButton(bool block)
{
    blockWindowButton = block;
}

int KovaInputSheet::exec()
{
    return d->modality.exec(blockWindowButton, d->lineEdit, Qt::OtherFocusReason);
}

void KovaInputSheet::showSheet()
{
    d->modality.begin(false, d->lineEdit);
}

void KovaInputSheet::done(int ret)
{
    d->modality.finish(ret);
}

void KovaInputSheet::quit()
{
    done(0);
}

void KovaInputSheet::buttonClick(QAbstractButton *which)
{
    done(d->buttonBox->standardButton(which));
}

bool KovaInputSheet::focusNextPrevChild(bool next)
{
    return d->modality.moveFocus(next);
}

bool KovaInputSheet::eventFilter(QObject *watched, QEvent *event)
{
    return d->modality.filterWindow(watched, event, blockWindowButton, d->buttonBox);
}
