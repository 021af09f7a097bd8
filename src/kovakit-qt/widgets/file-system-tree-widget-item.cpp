// SPDX-License-Identifier: MIT

#include "file-system-tree-widget-item.h"

FileSystemTreeWidgetItem::FileSystemTreeWidgetItem() = default;

bool FileSystemTreeWidgetItem::operator<(const QTreeWidgetItem &other) const
{
    const auto &right = dynamic_cast<const FileSystemTreeWidgetItem &>(other);
    if (right.tag == QLatin1String("home"))
        return false;
    return QTreeWidgetItem::operator<(other);
}
