// SPDX-License-Identifier: MIT

#include "settings-page.h"

#include "page-widgets.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-combo-box.h>
#include <kovakit-qt/widgets/kova-footbar.h>
#include <kovakit-qt/widgets/kova-line-edit.h>
#include <kovakit-qt/widgets/link-label.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace {

constexpr int captionWidth = 130;
constexpr int fieldWidth = 200;

bool isHost(const QString &text)
{
    return !text.isEmpty() && !text.contains(QLatin1Char(' '));
}

bool isPort(const QString &text)
{
    const int number = text.toInt();
    return number > 0 && number < 65536;
}

bool isCount(const QString &text)
{
    return text.toInt() > 0;
}

QStringList hours()
{
    QStringList texts;
    for (int half = 0; half < 30; ++half)
        texts.append(GalleryPage::tr("Every day at %1:%2")
                         .arg(7 + half / 2, 2, 10, QLatin1Char('0'))
                         .arg(half % 2 * 30, 2, 10, QLatin1Char('0')));
    return texts;
}

} // namespace

SettingsPage::SettingsPage()
{
    add(makeForm());
    add(makeStates());
}

KovaLineEdit *SettingsPage::makeField(const QString &caption, const QString &text,
                                      const QString &unit)
{
    auto *field = new KovaLineEdit;
    field->setSpacing(8);
    field->getPreLabel()->setText(caption);
    field->getPreLabel()->setFixedWidth(kovaPx(captionWidth));
    field->getLineEdit()->setText(text);
    field->getLineEdit()->setFixedSize(kovaPx(fieldWidth), kovaPx(28));
    field->getPostLabel()->setText(unit);
    connect(field->getLineEdit(), &QLineEdit::textChanged, this, [this, field] {
        if (field->getLineEdit()->property("error").toBool())
            check(field);
    });
    connect(field->getLineEdit(), &QLineEdit::returnPressed, this, &SettingsPage::save);
    m_fields.append(field);
    return field;
}

QWidget *SettingsPage::makeForm()
{
    auto *card =
        new Card(tr("Backup server"), tr("What is wrong is marked when you save, and stays marked "
                                         "until it is right. Try the port 80000."));
    const auto addField = [this, card](const QString &caption, const char *text,
                                       const QString &unit, bool (*validator)(const QString &),
                                       const QString &reason) {
        KovaLineEdit *field = makeField(caption, QString::fromLatin1(text), unit);
        field->setValidator(validator);
        m_reasons.insert(field, reason);
        card->add(field);
    };
    addField(tr("&Server"), "backup.example.org", QString(), isHost,
             tr("Enter the name of the server, without blanks."));
    addField(tr("&Port"), "8080", tr("from 1 to 65535"), isPort,
             tr("Enter a number from 1 to 65535."));
    addField(tr("&Keep"), "32", tr("versions of each file"), isCount, tr("Enter a number from 1."));

    auto *times = new KovaComboBox;
    times->addItems(hours());
    times->setCurrentIndex(26);
    times->setFixedWidth(kovaPx(fieldWidth));
    connect(times, &QComboBox::currentTextChanged, this,
            [this](const QString &text) { report(tr("Chosen: %1.").arg(text)); });
    QLabel *caption = makeRowLabel(tr("&Time"));
    setStyleKey(caption, "component.lineedit_label");
    caption->setBuddy(times);
    caption->setFixedWidth(kovaPx(captionWidth));
    card->addRow({caption, times});
    addPopup(
        times, QStringLiteral("times"), [times] { times->showPopup(); },
        [times] { return times->view()->isVisible(); });

    m_problem = makeCaption(QString());
    card->add(m_problem);
    card->add(makeFootbar());
    addScene(QStringLiteral("error"), [this] {
        m_fields[1]->getLineEdit()->setText(QStringLiteral("80000"));
        save();
    });
    return card;
}

QWidget *SettingsPage::makeFootbar()
{
    auto *bar = new KovaFootbar;
    auto *help = new LinkLabel(tr("How are versions counted?"));
    setStyleKey(help, "gallery.link");
    connect(help, &LinkLabel::clicked, this,
            [this] { report(tr("The link was pressed. It opens nothing itself.")); });
    auto *undo = new KovaButton(tr("Undo"), KovaButton::Cancel);
    auto *saveButton = new KovaButton(tr("Save"), KovaButton::Apply);
    connect(undo, &QPushButton::clicked, this, [this] {
        m_fields[1]->getLineEdit()->setText(QStringLiteral("8080"));
        save();
    });
    connect(saveButton, &QPushButton::clicked, this, &SettingsPage::save);
    bar->pushLeftWidget(help);
    bar->pushRightWidget(undo);
    bar->pushRightWidget(saveButton);
    bar->init();
    bar->setMargins(0, 8, 0, 0);
    return bar;
}

void SettingsPage::check(KovaLineEdit *field)
{
    field->setError(field->validate() ? QString() : m_reasons.value(field));
    const bool wrong = std::any_of(m_fields.begin(), m_fields.end(), [](KovaLineEdit *each) {
        return each->getLineEdit()->property("error").toBool();
    });
    m_problem->setText(wrong ? tr("The marked entries are not valid.") : QString());
}

void SettingsPage::save()
{
    for (KovaLineEdit *field : m_fields)
        check(field);
    report(m_problem->text().isEmpty() ? tr("Saved.") : tr("Not saved."));
}

QWidget *SettingsPage::makeStates()
{
    auto *card = new Card(tr("Looks and states"));
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(kovaPx(12));
    grid->setVerticalSpacing(kovaPx(6));
    int column = 0;
    const auto addState = [&](const QString &name, QLineEdit *field, QWidget *box) {
        field->setFixedHeight(kovaPx(28));
        field->setAccessibleName(name);
        grid->addWidget(makeRowLabel(name), 0, column);
        grid->addWidget(field->parentWidget(), 1, column, Qt::AlignTop);
        if (box)
            grid->addWidget(box, 2, column);
        ++column;
    };
    const auto makeEdit = [] {
        auto *edit = new KovaLineEdit;
        edit->getPreLabel()->hide();
        edit->getPostLabel()->hide();
        edit->getLineEdit()->setText(QStringLiteral("ada"));
        return edit;
    };
    const auto makeBox = [] {
        auto *box = new KovaComboBox;
        box->addItems({tr("Every day"), tr("Every week")});
        return box;
    };
    addState(tr("At rest"), makeEdit()->getLineEdit(), makeBox());
    KovaLineEdit *wrong = makeEdit();
    wrong->setError(true);
    addState(tr("Wrong"), wrong->getLineEdit(), nullptr);
    KovaLineEdit *fixed = makeEdit();
    fixed->getLineEdit()->setReadOnly(true);
    addState(tr("Read only"), fixed->getLineEdit(), nullptr);
    KovaLineEdit *off = makeEdit();
    off->setEnabled(false);
    KovaComboBox *offBox = makeBox();
    offBox->setEnabled(false);
    addState(tr("Switched off"), off->getLineEdit(), offBox);
    card->add(grid);
    return card;
}
