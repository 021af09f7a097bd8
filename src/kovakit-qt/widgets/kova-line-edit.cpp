// SPDX-License-Identifier: MIT

#include "kova-line-edit.h"

#include "kovakit-qt/style/placeholder-color_p.h"
#include "kovakit-qt/utils/markup_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QAccessible>
#include <QAccessibleEvent>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QTextDocument>

#include <initializer_list>

namespace {

// Screen readers speak it in the language of their user ("warning"), and Qt has no state for an
// entry that is wrong.
const QString &warningSign()
{
    static const QString sign(QChar(0x26A0));
    return sign;
}

bool isWordCharacter(QChar character)
{
    return character.isLetterOrNumber();
}

// "&Name" and "E&xit", but neither "Name & address" nor "R&D".
bool marksShortcut(const QString &text, int ampersand)
{
    if (ampersand + 1 >= text.size() || !isWordCharacter(text.at(ampersand + 1)))
        return false;
    const QChar next = text.at(ampersand + 1);
    const bool insideWord = ampersand > 0 && isWordCharacter(text.at(ampersand - 1));
    return !insideWord || (next.isLetter() && !next.isUpper());
}

// Whether @p text is written for a buddy, to which Qt reads every ampersand as a mark. The first
// single one tells, for that is the one that Qt makes a shortcut of.
bool isMarked(const QString &text)
{
    if (Qt::mightBeRichText(text))
        return false;
    bool doubled = false;
    for (int at = text.indexOf(QLatin1Char('&')); at >= 0;
         at = text.indexOf(QLatin1Char('&'), at + 2)) {
        if (at + 1 == text.size() || text.at(at + 1) != QLatin1Char('&'))
            return marksShortcut(text, at);
        doubled = true;
    }
    return doubled;
}

} // namespace

class KovaLineEdit::Private
{
public:
    explicit Private(KovaLineEdit *widget)
        : layout(new QHBoxLayout(widget))
    {
    }

    void readLabels();
    void showError(bool error, const QString &reason);
    void placeReason();
    void describeError(bool error, const QString &reason);

    QHBoxLayout *const layout;
    QLabel *const preLabel = new QLabel;
    QLabel *const postLabel = new QLabel;
    QLineEdit *const lineEdit = new QLineEdit;
    QLabel *reasonLabel = nullptr;
    QMargins margins;
    QString labelName;
    // What the field is described as, by this class and by its owner.
    QString description;
    QString ownDescription;
    bool (*validator)(const QString &) = nullptr;
};

KovaLineEdit::KovaLineEdit(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    d->layout->setAlignment(Qt::AlignLeft);
    setSpacing(0);
    setMargins(0, 0, 0, 0);
    for (QWidget *widget : std::initializer_list<QWidget *>{d->preLabel, d->lineEdit, d->postLabel})
        d->layout->addWidget(widget);

    const QString labelStyle = getStyleSheet("component.lineedit_label", false);
    d->preLabel->setStyleSheet(labelStyle);
    setPlaceholderApart(d->lineEdit);
    d->lineEdit->setStyleSheet(getStyleSheet("component.lineedit", false));
    d->postLabel->setStyleSheet(labelStyle);

    setFocusProxy(d->lineEdit);
}

KovaLineEdit::~KovaLineEdit() = default;

QLabel *KovaLineEdit::getPreLabel() const
{
    return d->preLabel;
}

QLabel *KovaLineEdit::getPostLabel() const
{
    return d->postLabel;
}

QLineEdit *KovaLineEdit::getLineEdit() const
{
    return d->lineEdit;
}

void KovaLineEdit::setMargins(int left, int top, int right, int bottom)
{
    d->margins = QMargins(kovaPx(left), kovaPx(top), kovaPx(right), kovaPx(bottom));
    d->placeReason();
}

void KovaLineEdit::setSpacing(int spacing)
{
    d->layout->setSpacing(kovaPx(spacing));
}

void KovaLineEdit::setValidator(bool (*validator)(const QString &))
{
    d->validator = validator;
}

bool KovaLineEdit::validate() const
{
    return !d->validator || d->validator(d->lineEdit->text());
}

void KovaLineEdit::setError(bool error)
{
    d->showError(error, QString());
}

void KovaLineEdit::setError(const QString &reason)
{
    d->showError(!reason.isEmpty(), reason);
}

void KovaLineEdit::setError(const char *reason)
{
    setError(QString::fromUtf8(reason));
}

void KovaLineEdit::Private::showError(bool error, const QString &reason)
{
    if (!reason.isEmpty() && !reasonLabel) {
        reasonLabel = new QLabel(lineEdit->parentWidget());
        reasonLabel->setTextFormat(Qt::PlainText);
        reasonLabel->setWordWrap(true);
        reasonLabel->setStyleSheet(getStyleSheet("component.lineedit_error", false));
    }
    if (reasonLabel) {
        reasonLabel->setText(reason);
        reasonLabel->setVisible(!reason.isEmpty());
        placeReason();
    }
    lineEdit->setProperty("error", error);
    lineEdit->style()->polish(lineEdit);
    lineEdit->update();
    describeError(error, reason);
}

// Below the row, in a margin: the row is one line of three, which hosts reach by layout().
void KovaLineEdit::Private::placeReason()
{
    int room = 0;
    if (reasonLabel && !reasonLabel->text().isEmpty()) {
        const QRect row = layout->contentsRect();
        const QRect field = lineEdit->geometry();
        const int gap = kovaPx(4);
        const bool fromRight = lineEdit->isRightToLeft();
        const int width =
            fromRight ? field.right() + 1 - row.left() : row.right() + 1 - field.left();
        const int height = reasonLabel->heightForWidth(width);
        reasonLabel->setGeometry(fromRight ? row.left() : field.left(), row.bottom() + 1 + gap,
                                 width, height);
        room = gap + height;
    }
    layout->setContentsMargins(margins + QMargins(0, 0, 0, room));
}

void KovaLineEdit::Private::describeError(bool error, const QString &reason)
{
    const QString before = lineEdit->accessibleDescription();
    if (before != description)
        ownDescription = before;
    QStringList parts = {error ? warningSign() : QString(), reason, ownDescription};
    parts.removeAll(QString());
    description = error ? parts.join(QLatin1Char(' ')) : ownDescription;
    lineEdit->setAccessibleDescription(description);
    if (error && description != before) {
        QAccessibleEvent alert(lineEdit, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

QString KovaLineEdit::getEditText() const
{
    return d->lineEdit->text();
}

bool KovaLineEdit::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show)
        d->readLabels();
    const bool done = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize)
        d->placeReason();
    return done;
}

void KovaLineEdit::Private::readLabels()
{
    QString name;
    for (QLabel *label : {preLabel, postLabel}) {
        const QString text = label->text();
        const bool marked = isMarked(text);
        if (marked != (label->buddy() == lineEdit)) {
            // Only a new text makes a label forget that the one before it was marked.
            label->setText(QString());
            label->setBuddy(marked ? lineEdit : nullptr);
            label->setText(text);
        }
        if (name.isEmpty())
            name = marked ? withoutMnemonics(text) : withoutMarkup(text);
    }
    // What the owner has called the field stays.
    const QString known = lineEdit->accessibleName();
    if (known != name && (known.isEmpty() || known == labelName))
        lineEdit->setAccessibleName(name);
    labelName = name;
}
