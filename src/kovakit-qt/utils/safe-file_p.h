// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

// Opens @p path for reading if it is a regular file; a pipe or a device is refused at once instead
// of waited for. @p file must not be open.
[[nodiscard]] bool openRegularFile(QFile &file, const QString &path);

// Whether nobody but this user can decide what lies in the folder @p path. Outside the temporary
// folder, which everybody shares, that is for the system's owner to see to, and the answer is true.
// Below it every folder on the way must be this user's own, none a symbolic link, and none writable
// by others unless a private one is around it.
[[nodiscard]] bool isTrustedFolder(const QString &path);

// Makes the folder @p path below the temporary folder, or takes the one that is there, if every
// folder on the way is this user's own and no symbolic link; others then can write to none of them.
// False if there is no such folder.
[[nodiscard]] bool makeOwnFolder(const QString &path);

// Whether the folder @p path is this user's own, nobody else can enter it, and it is no link; below
// the temporary folder isTrustedFolder() has to hold too.
[[nodiscard]] bool isPrivateFolder(const QString &path);

// Makes the folder @p path, and what is missing of the way to it, for this user alone, or takes the
// one that is there. False if isPrivateFolder() does not hold afterwards.
[[nodiscard]] bool makePrivateFolder(const QString &path);

// Puts @p content in place of the file @p path, in one step: nobody ever sees half of it.
//
// A link, pipe or device at @p path itself is replaced, not followed, and a file that holds @p
// content already is left as it is. False if the file does not hold it afterwards.
bool replaceFile(const QString &path, const QByteArray &content);

// As replaceFile(), for what came from strangers: no other user can read or move it.
//
// Writes only into a folder that belongs to this user. Below the temporary folder, which everybody
// shares, the same holds for every folder on the way, and none of them may be a symbolic link.
bool replaceOwnFile(const QString &path, const QByteArray &content);
