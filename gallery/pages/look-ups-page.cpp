// SPDX-License-Identifier: MIT

#include "look-ups-page.h"

#include "page-widgets.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/utils/file-type-map.h>
#include <kovakit-qt/utils/kova-locale.h>
#include <kovakit-qt/widgets/kova-line-edit.h>

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include <utility>

namespace {

using LookUp = QString (*)(const QString &);

QString languageOf(const QString &locale)
{
    return KovaLocale::getInstance()->getLanguageByLocale(locale.toLower());
}

QString iconOf(const QString &extension)
{
    return FileTypeMap::getInstance()->getFiletypeMapping(extension, false);
}

// A field whose answer stands behind it and follows every letter.
KovaLineEdit *makeQuestion(const QString &caption, const QString &text, LookUp lookUp)
{
    auto *question = new KovaLineEdit;
    question->setSpacing(8);
    question->getPreLabel()->setText(caption);
    question->getPreLabel()->setFixedWidth(kovaPx(90));
    question->getLineEdit()->setFixedSize(kovaPx(140), kovaPx(28));
    question->getPostLabel()->setMinimumWidth(kovaPx(60));
    QObject::connect(question->getLineEdit(), &QLineEdit::textChanged, question,
                     [question, lookUp](const QString &asked) {
                         question->getPostLabel()->setText(lookUp(asked));
                     });
    question->getLineEdit()->setText(text);
    return question;
}

QGridLayout *makeAnswers(const QStringList &questions, LookUp lookUp)
{
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(kovaPx(12));
    grid->setVerticalSpacing(kovaPx(5));
    for (int row = 0; row < questions.size(); ++row) {
        grid->addWidget(makeRowLabel(questions[row]), row, 0);
        grid->addWidget(makeRowLabel(lookUp(questions[row])), row, 1);
    }
    grid->setColumnStretch(2, 1);
    return grid;
}

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

} // namespace

LookUpsPage::LookUpsPage()
{
    addSideBySide({makeLocales(), makeFileTypes()});
}

QWidget *LookUpsPage::makeLocales()
{
    auto *card = new Card(
        tr("Languages"),
        tr("This system's language is %1.").arg(KovaLocale::getInstance()->getDefaultLanguage()));
    card->add(makeQuestion(tr("&Locale"), QStringLiteral("pt_BR"), languageOf));
    card->add(makeAnswers(words("en_us de_at nb_no nn_no pt pt_pt pt_br zh_tw zh_hk zh_cn fi_fi"),
                          languageOf));
    return card;
}

QWidget *LookUpsPage::makeFileTypes()
{
    auto *card =
        new Card(tr("Icons of files"), tr("The name of the icon; the pictures are the host's."));
    card->add(makeQuestion(tr("&Extension"), QStringLiteral("DOCX"), iconOf));
    card->add(makeAnswers(words("mp3 ac3 mkv jpg docx xlsx pdf cpp 7z iso unknown"), iconOf));
    return card;
}
