// SPDX-License-Identifier: MIT

#include "kova-combo-box.h"

#include "kovakit-qt/style/placeholder-color_p.h"
#include "kovakit-qt/utils/input-guards_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QAbstractItemView>
#include <QChildEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QRegularExpressionMatchIterator>
#include <QStyleOptionComboBox>
#include <QStyledItemDelegate>

namespace {

// The places of the template take @p padding and @p border. What looks like one in the name of a
// picture's folder is none.
QString filled(QString style, const QString &padding, const QString &border)
{
    static const QRegularExpression url(QStringLiteral(R"(url\((?:"[^"]*"|[^)]*)\))"));
    QStringList urls;
    for (auto match = url.globalMatch(style); match.hasNext();)
        urls.append(match.next().captured());
    const QChar stand(QChar::ObjectReplacementCharacter);
    QStringList parts = style.replace(url, stand).arg(padding).arg(border).split(stand);
    for (int i = 0; i < urls.size(); ++i)
        parts[i] += urls.at(i);
    return parts.join(QString());
}

QString boxStyle()
{
    const QString style = getStyleSheet("component.combobox", false);
    if (style.isEmpty())
        return style;
    const QString padding = QString::number(6 * DPIinfo::getInstance()->getDPI(), 'g', 6);
    return filled(style, QStringLiteral("padding-left: %1px; \npadding-right: %1px;").arg(padding),
                  QStringLiteral("border: 1px solid #C8D2DC;"));
}

// Assistive technology selects an item of the list and moves nothing; the pointer and keys move the
// current item too, which comes to the list just after.
void chooseWhatIsSelected(KovaComboBox *box)
{
    const QItemSelectionModel *selection = box->view()->selectionModel();
    QObject::disconnect(selection, &QItemSelectionModel::selectionChanged, box, nullptr);
    const auto choose = [box] {
        const QModelIndexList selected = box->view()->selectionModel()->selectedIndexes();
        if (selected.isEmpty() || selected.constFirst() == box->view()->currentIndex()
            || !(selected.constFirst().flags() & Qt::ItemIsEnabled))
            return;
        box->hidePopup();
        box->setCurrentIndex(selected.constFirst().row());
        Q_EMIT box->activated(box->currentIndex());
        Q_EMIT box->textActivated(box->currentText());
    };
    QObject::connect(selection, &QItemSelectionModel::selectionChanged, box, choose,
                     Qt::QueuedConnection);
}

} // namespace

KovaComboBox::KovaComboBox(QWidget *parent)
    : QComboBox(parent)
{
    setStyleSheet(boxStyle() + getStyleSheet("component.scrollbar", false));
    passWheelWithoutFocus(this);
    setPlaceholderApart(this);
    // The delegate that a combo box brings along does not draw the items' style rules.
    view()->setItemDelegate(new QStyledItemDelegate(view()));
}

void KovaComboBox::showEvent(QShowEvent *event)
{
    // Not in the constructor: a model that is set later brings a selection of its own along.
    chooseWhatIsSelected(this);
    QComboBox::showEvent(event);
}

void KovaComboBox::paintEvent(QPaintEvent *)
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const bool isEmpty = currentIndex() < 0 && !isEditable();
    paintComboBox(this, option, isEmpty ? placeholderText() : QString());
}

void KovaComboBox::childEvent(QChildEvent *event)
{
    auto *edit = qobject_cast<QLineEdit *>(event->child());
    if (edit && event->polished())
        setPlaceholderApart(edit);
    QComboBox::childEvent(event);
}
