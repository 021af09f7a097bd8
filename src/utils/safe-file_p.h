#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

// Opens @p path for reading if it is a regular file; a pipe or a device is refused at once instead
// of waited for. @p file must not be open.
[[nodiscard]] bool openRegularFile(QFile &file, const QString &path);

// Puts @p content in place of the file @p path, in one step: nobody ever sees half of it.
//
// Writes only into a folder that belongs to this user. Below the temporary folder, which everybody
// shares, the same holds for every folder on the way, and none of them may be a symbolic link. A
// link, pipe or device at @p path itself is replaced, not followed. False if nothing was written.
bool replaceOwnFile(const QString &path, const QByteArray &content);
