// SPDX-License-Identifier: MIT

#include "ui-path-manager.h"

#include <kovakit-qt/utils/util.h>

#include <QLoggingCategory>

#include <utility>

UIPathManager *UIPathManager::getInstance()
{
    static UIPathManager instance;
    return &instance;
}

void UIPathManager::setPath(const QString &key, const QString &path)
{
    const bool added = m_paths.insert_or_assign(key, path).second;
    if (!added) {
        qCWarning(debug_message) << "Existing path is" << path << "with key" << key
                                 << "but overwrite it now";
    }
}

QString UIPathManager::getPath(const QString &key) const
{
    const auto found = m_paths.find(key);
    if (found != m_paths.end())
        return found->second;
    qCWarning(debug_message) << "Cannot find path by key" << key;
    return QString();
}
