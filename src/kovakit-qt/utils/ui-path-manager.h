// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QString>

#include <map>

/**
 * Where the host keeps things: folders by key.
 *
 * The library reads two of them, and both must be set before ImageManager::initialize():
 * "resource_path", the folder that holds images.json and the images folder, and "user_data_path",
 * the folder of this user under which generated pictures are written. They may end in a slash. A
 * folder whose name holds a double quote or a backslash cannot be named in a style sheet: its
 * pictures load, but not the marks of check boxes, combo boxes and the like. Other keys are the
 * host's own. Use it from the GUI thread only.
 */
class KOVAKIT_EXPORT UIPathManager
{
public:
    /** The one instance of the process, created by the first call and empty at first. */
    static UIPathManager *getInstance();

    /** Stores @p path under @p key. Replacing an earlier path logs a warning. */
    void setPath(const QString &key, const QString &path);

    /** The path stored under @p key, or an empty string and a warning if there is none. */
    [[nodiscard]] QString getPath(const QString &key) const;

private:
    UIPathManager() = default;
    Q_DISABLE_COPY(UIPathManager)

    std::map<QString, QString> m_paths;
};
