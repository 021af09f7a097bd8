// SPDX-License-Identifier: MIT

#include "kova-input-sheet.h"

#include "sheet-callbacks_p.h"

#include "kovakit-qt/modality/sheet-buttons_p.h"
#include "kovakit-qt/modality/sheet-core_p.h"
#include "kovakit-qt/style/placeholder-color_p.h"
#include "kovakit-qt/utils/component-strings_p.h"
#include "kovakit-qt/utils/markup_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/message-label.h>

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>

class KovaInputSheetPrivate : public QObject
{
public:
    explicit KovaInputSheetPrivate(KovaInputSheet *sheet);

    void initialize();
    void setText(const QString &text);
    void setUpLayout();
    void setCompact(bool compact);
    [[nodiscard]] int getPreferredWidth() const;

    KovaInputSheet *q;
    MessageLabel *textLabel;
    QLineEdit *lineEdit;
    SheetCore core;
};

KovaInputSheetPrivate::KovaInputSheetPrivate(KovaInputSheet *sheet)
    : QObject(sheet)
    , q(sheet)
    , textLabel(new MessageLabel(sheet))
    , lineEdit(new QLineEdit(sheet))
    , core(sheet, modalityCallbacks(sheet),
           {[this] { return kovaPx(getPreferredWidth()); },
            [sheet] { return marginsOfMask(sheet); },
            [this](bool compact) { setCompact(compact); }})
{
}

void KovaInputSheetPrivate::initialize()
{
    q->setStyleSheet(getStyleSheet("component.message_sheet_other", false));
    orderButtons(core.buttonBox);
    connect(core.buttonBox, &QDialogButtonBox::clicked, q, &KovaInputSheet::buttonClick);
    core.buttonBox->setStandardButtons(acceptButton | secondButton);
    dressOkButton(core.buttonBox, componentString("ok"));
    dressSecondButton(core.buttonBox, componentString("cancel"));
    lineEdit->setFixedHeight(kovaPx(28));
    setPlaceholderApart(lineEdit);
    lineEdit->setStyleSheet(getStyleSheet("component.lineedit", false));
    setUpLayout();
}

void KovaInputSheetPrivate::setText(const QString &text)
{
    textLabel->setText(sheetParagraph(text, 20));
    textLabel->setWordWrap(true);
    textLabel->setAlignment(Qt::AlignTop);
    textLabel->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Maximum);
    lineEdit->setAccessibleName(withoutMarkup(text));
    setUpLayout();
}

void KovaInputSheetPrivate::setUpLayout()
{
    core.fit.leaveLayout();
    delete q->layout();
    auto *main = new QVBoxLayout(q);
    main->setSpacing(0);
    main->addLayout(core.fit.makeTextColumn({textLabel}, 0));
    main->addSpacing(kovaPx(8));
    main->addWidget(lineEdit);
    core.fit.addButtons(main, kovaPx(24));
    setCompact(false);
    core.fit.start();
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
    const QWidget *parent = core.fit.owner();
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

KovaInputSheet::~KovaInputSheet()
{
    d->core.end();
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
    return d->core.button(which);
}

void KovaInputSheet::setDefaultButton(QPushButton *button)
{
    setAsDefault(button);
}

void KovaInputSheet::setBlockWindowButton(bool block)
{
    d->core.setBlockWindowButton(block);
}

int KovaInputSheet::exec()
{
    return d->core.exec(d->lineEdit, Qt::OtherFocusReason);
}

void KovaInputSheet::showSheet()
{
    d->core.show(d->lineEdit);
}

void KovaInputSheet::done(int ret)
{
    d->core.finish(ret);
}

void KovaInputSheet::quit()
{
    done(0);
}

void KovaInputSheet::buttonClick(QAbstractButton *which)
{
    done(d->core.codeOf(which));
}

bool KovaInputSheet::focusNextPrevChild(bool next)
{
    return d->core.moveFocus(next);
}

bool KovaInputSheet::eventFilter(QObject *watched, QEvent *event)
{
    return d->core.filterWindow(watched, event);
}
