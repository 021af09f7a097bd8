// SPDX-License-Identifier: MIT

#include "item-delegate.h"

#include "kovakit-qt/style/crisp-icons_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QRegularExpression>
#include <QRegularExpressionValidator>

QRect g_check_rect;

namespace {

void restrictToFileNames(QLineEdit *edit)
{
    // A model that changes while the editor is open fills it again.
    if (edit->findChild<QRegularExpressionValidator *>(QString(), Qt::FindDirectChildrenOnly))
        return;
    static const QRegularExpression fileName(QStringLiteral(R"(^[^\.\\\/:*?"<>|][^\\\/:*?"<>|]*)"));
    edit->setValidator(new QRegularExpressionValidator(fileName, edit));
    edit->setStyleSheet(getStyleSheet("component.tree_item", false));
    edit->setAttribute(Qt::WA_MacShowFocusRect, false);
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
