// SPDX-License-Identifier: MIT

#include "item-delegate.h"

#include "kovakit-qt/accessibility/announcement_p.h"
#include "kovakit-qt/style/crisp-icons_p.h"
#include "kovakit-qt/utils/component-strings_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/escape-tooltip.h>

#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QToolTip>

QRect g_check_rect;

namespace {

void tellWhatIsRefused(QLineEdit *edit)
{
    const QString reason = componentString("file_name_refused",
                                           "A name cannot begin with a dot or contain any of these "
                                           "characters: \\ / : * ? \" < > |");
    QToolTip::showText(edit->mapToGlobal(QPoint(0, edit->height())),
                       getHtmlEscapedStringForToolTip(reason), edit);
    edit->setAccessibleDescription(reason);
    announce(edit->parentWidget(), reason);
}

void restrictToFileNames(QLineEdit *edit)
{
    // A model that changes while the editor is open fills it again.
    if (edit->findChild<QRegularExpressionValidator *>(QString(), Qt::FindDirectChildrenOnly))
        return;
    static const QRegularExpression fileName(QStringLiteral(R"(^[^\.\\\/:*?"<>|][^\\\/:*?"<>|]*)"));
    edit->setValidator(new QRegularExpressionValidator(fileName, edit));
    edit->setStyleSheet(getStyleSheet("component.tree_item", false));
    edit->setAttribute(Qt::WA_MacShowFocusRect, false);
    edit->setAccessibleName(componentString("accessible_new_name", "New name"));
    QObject::connect(edit, &QLineEdit::inputRejected, edit, [edit] { tellWhatIsRefused(edit); });
    QObject::connect(edit, &QLineEdit::textEdited, edit, &QToolTip::hideText);
    // Assistive technology sets the text past the validator.
    QObject::connect(edit, &QLineEdit::textChanged, edit, [edit](const QString &text) {
        if (!text.isEmpty() && !edit->hasAcceptableInput())
            tellWhatIsRefused(edit);
    });
}

} // namespace

ItemDelegate::ItemDelegate() = default;

QSize ItemDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return {QItemDelegate::sizeHint(option, index).width(), kovaPx(28)};
}

void ItemDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    if (auto *edit = qobject_cast<QLineEdit *>(editor)) {
        restrictToFileNames(edit);
        edit->selectAll();
    }
    QItemDelegate::setEditorData(editor, index);
}

void ItemDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                const QModelIndex &index) const
{
    // The loss of focus ends the editing, whatever the field holds.
    const auto *edit = qobject_cast<QLineEdit *>(editor);
    if (!edit || edit->hasAcceptableInput())
        QItemDelegate::setModelData(editor, model, index);
}

bool ItemDelegate::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        auto *keyEvent = static_cast<QKeyEvent *>(event);
        const QPointer<ItemDelegate> guard(this);
        const QPointer<QObject> editor(object);
        if (keyEvent->key() == Qt::Key_Escape)
            Q_EMIT sigKeyPressed(keyEvent);
        if (!guard || !editor)
            return true;
    }
    return QItemDelegate::eventFilter(object, event);
}

void ItemDelegate::drawCheck(QPainter *painter, const QStyleOptionViewItem &option,
                             const QRect &rect, Qt::CheckState state) const
{
    g_check_rect = rect;
    const CrispIcons crisp;
    QItemDelegate::drawCheck(painter, option, rect, state);
}
