#include "kova-line-edit.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>

namespace {

// Screen readers speak it in the language of their user ("warning"), and Qt has no state for an
// entry that is wrong.
const QString &warningSign()
{
    static const QString sign(QChar(0x26A0));
    return sign;
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
    m_lineEdit->setStyleSheet(getStyleSheet("component.lineedit", false));
    m_postLabel->setStyleSheet(labelStyle);

    m_preLabel->setBuddy(m_lineEdit);
    m_postLabel->setBuddy(m_lineEdit);
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
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show) {
        // The first buddy names the field to screen readers, even if it has nothing to say.
        for (QLabel *label : {m_preLabel, m_postLabel}) {
            QWidget *buddy = label->text().isEmpty() ? nullptr : m_lineEdit;
            if (label->buddy() != buddy)
                label->setBuddy(buddy);
        }
    }
    return QWidget::event(event);
}
