#include "kova-line-edit.h"

#include "kovakit-qt/style/placeholder-color_p.h"
#include "kovakit-qt/utils/markup_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QTextDocument>

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

QString withoutMarks(const QString &text)
{
    QString words;
    for (int at = 0; at < text.size(); ++at) {
        if (text.at(at) == QLatin1Char('&') && ++at == text.size())
            break;
        words += text.at(at);
    }
    return words;
}

} // namespace

KovaLineEdit::KovaLineEdit(QWidget *parent)
    : QWidget(parent)
    , m_layout(new QHBoxLayout(this))
    , m_preLabel(new QLabel)
    , m_postLabel(new QLabel)
    , m_lineEdit(new QLineEdit)
{
    m_layout->setAlignment(Qt::AlignLeft);
    setSpacing(0);
    setMargins(0, 0, 0, 0);
    for (QWidget *widget : {static_cast<QWidget *>(m_preLabel), static_cast<QWidget *>(m_lineEdit),
                            static_cast<QWidget *>(m_postLabel)})
        m_layout->addWidget(widget);

    const QString labelStyle = getStyleSheet("component.lineedit_label", false);
    m_preLabel->setStyleSheet(labelStyle);
    setPlaceholderApart(m_lineEdit);
    m_lineEdit->setStyleSheet(getStyleSheet("component.lineedit", false));
    m_postLabel->setStyleSheet(labelStyle);

    setFocusProxy(m_lineEdit);
}

void KovaLineEdit::setMargins(int left, int top, int right, int bottom)
{
    m_layout->setContentsMargins(kovaPx(left), kovaPx(top), kovaPx(right), kovaPx(bottom));
}

void KovaLineEdit::setSpacing(int spacing)
{
    m_layout->setSpacing(kovaPx(spacing));
}

void KovaLineEdit::setValidator(bool (*validator)(const QString &))
{
    m_validator = validator;
}

bool KovaLineEdit::validate() const
{
    return !m_validator || m_validator(m_lineEdit->text());
}

void KovaLineEdit::setError(bool error)
{
    m_lineEdit->setProperty("error", error);
    m_lineEdit->style()->polish(m_lineEdit);
    m_lineEdit->update();
    describeError(error);
}

void KovaLineEdit::describeError(bool error)
{
    const QString description = m_lineEdit->accessibleDescription();
    const bool described = description.startsWith(warningSign());
    if (error && !described) {
        m_lineEdit->setAccessibleDescription(
            QString(warningSign() + QLatin1Char(' ') + description).trimmed());
        QAccessibleEvent alert(m_lineEdit, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    } else if (!error && described) {
        m_lineEdit->setAccessibleDescription(description.mid(warningSign().size()).trimmed());
    }
}

QString KovaLineEdit::getEditText() const
{
    return m_lineEdit->text();
}

bool KovaLineEdit::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show)
        readLabels();
    return QWidget::event(event);
}

void KovaLineEdit::readLabels()
{
    QString name;
    for (QLabel *label : {m_preLabel, m_postLabel}) {
        const QString text = label->text();
        const bool marked = isMarked(text);
        if (marked != (label->buddy() == m_lineEdit)) {
            // Only a new text makes a label forget that the one before it was marked.
            label->setText(QString());
            label->setBuddy(marked ? m_lineEdit : nullptr);
            label->setText(text);
        }
        if (name.isEmpty())
            name = marked ? withoutMarks(text) : withoutMarkup(text);
    }
    // What the owner has called the field stays.
    const QString known = m_lineEdit->accessibleName();
    if (known != name && (known.isEmpty() || known == m_labelName))
        m_lineEdit->setAccessibleName(name);
    m_labelName = name;
}
