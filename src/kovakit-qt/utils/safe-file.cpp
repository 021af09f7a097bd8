// SPDX-License-Identifier: MIT

#include "safe-file_p.h"

#include <QDir>
#include <QFile>
#include <QFileDevice>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>
#include <utility>

namespace {

class Descriptor
{
public:
    explicit Descriptor(int number = -1)
        : m_number(number)
    {
    }
    Descriptor(Descriptor &&other) noexcept
        : m_number(other.release())
    {
    }
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        close();
        m_number = other.release();
        return *this;
    }
    ~Descriptor() { close(); }
    Q_DISABLE_COPY(Descriptor)

    [[nodiscard]] bool isValid() const { return m_number >= 0; }
    [[nodiscard]] int get() const { return m_number; }
    int release() { return std::exchange(m_number, -1); }

    // Whether everything that was written has reached the file.
    bool close() { return m_number < 0 || ::close(release()) == 0; }

private:
    int m_number;
};

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

constexpr mode_t othersWriteBits = S_IWGRP | S_IWOTH;
constexpr mode_t othersBits = S_IRWXG | S_IRWXO;

// The permissions of @p folder; none if it is not this user's own.
std::optional<mode_t> modeOfOwn(const Descriptor &folder)
{
    struct stat status = {};
    if (!folder.isValid() || ::fstat(folder.get(), &status) != 0 || status.st_uid != ::geteuid())
        return std::nullopt;
    return status.st_mode & 07777;
}

// Keeps others from writing to @p folder; false if it is not this user's own.
bool closeToOthers(const Descriptor &folder)
{
    const std::optional<mode_t> mode = modeOfOwn(folder);
    return mode
        && ((*mode & othersWriteBits) == 0
            || ::fchmod(folder.get(), *mode & ~othersWriteBits) == 0);
}

QString sharedFolder()
{
    return QDir::cleanPath(QDir::tempPath());
}

bool isShared(const QString &cleanPath)
{
    return cleanPath.startsWith(sharedFolder() + QLatin1Char('/'));
}

// Opens the folder @p path below the temporary one, through no link. For each folder on the way,
// @p prepare may make it before it is opened, and @p accept says whether to go on in it.
template<typename Prepare, typename Accept>
Descriptor walkShared(const QString &path, const Prepare &prepare, const Accept &accept)
{
    const QString shared = sharedFolder();
    Descriptor folder(::open(QFile::encodeName(shared).constData(), folderFlags));
    for (const QString &name : path.mid(shared.size() + 1).split(QLatin1Char('/'))) {
        if (!folder.isValid())
            break;
        const QByteArray entry = QFile::encodeName(name);
        prepare(folder.get(), entry.constData());
        Descriptor next(::openat(folder.get(), entry.constData(), folderFlags | O_NOFOLLOW));
        folder = accept(next) ? std::move(next) : Descriptor();
    }
    return folder;
}

void leaveAsItIs(int, const char *) { }

Descriptor openOwnFolder(const QString &path)
{
    if (isShared(path))
        return walkShared(path, leaveAsItIs, closeToOthers);
    Descriptor folder(::open(QFile::encodeName(path).constData(), folderFlags | O_NOFOLLOW));
    return closeToOthers(folder) ? std::move(folder) : Descriptor();
}

bool writeAll(int descriptor, const QByteArray &content)
{
    qint64 written = 0;
    while (written < content.size()) {
        const ssize_t count =
            ::write(descriptor, content.constData() + written, size_t(content.size() - written));
        if (count < 0 && errno != EINTR)
            return false;
        written += qMax<qint64>(count, 0);
    }
    return true;
}

QString folderOf(const QString &path)
{
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    return QDir::cleanPath(slash < 0 ? QStringLiteral(".") : path.left(qMax(slash, 1)));
}

// Writes beside the file and renames, so that whoever has the old one open reads it to its end.
bool replaceIn(const Descriptor &folder, const QString &path, const QByteArray &content,
               mode_t permissions)
{
    const QByteArray name = QFile::encodeName(path.mid(path.lastIndexOf(QLatin1Char('/')) + 1));
    if (!folder.isValid() || path.contains(QChar::Null) || name.isEmpty() || name == "."
        || name == "..")
        return false;

    const QByteArray aside =
        ".part-" + QByteArray::number(QRandomGenerator::global()->generate64(), 36);
    Descriptor file(::openat(folder.get(), aside.constData(),
                             O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, permissions));
    if (!file.isValid())
        return false;
    const bool isWritten = writeAll(file.get(), content);
    if (file.close() && isWritten
        && ::renameat(folder.get(), aside.constData(), folder.get(), name.constData()) == 0)
        return true;
    ::unlinkat(folder.get(), aside.constData(), 0);
    return false;
}

} // namespace

bool openRegularFile(QFile &file, const QString &path)
{
    if (path.contains(QChar::Null))
        return false;
    Descriptor descriptor(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status = {};
    if (!descriptor.isValid() || ::fstat(descriptor.get(), &status) != 0
        || !S_ISREG(status.st_mode))
        return false;
    if (!file.open(descriptor.get(), QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return false;
    descriptor.release();
    return true;
}

bool isTrustedFolder(const QString &path)
{
    const QString cleanPath = QDir::cleanPath(path);
    if (cleanPath == sharedFolder())
        return false;
    if (!isShared(cleanPath))
        return true;
    bool isPrivate = false;
    const auto accept = [&isPrivate](const Descriptor &folder) {
        const std::optional<mode_t> mode = modeOfOwn(folder);
        isPrivate |= mode && (*mode & othersBits) == 0;
        return mode && (isPrivate || (*mode & othersWriteBits) == 0);
    };
    return walkShared(cleanPath, leaveAsItIs, accept).isValid();
}

bool makeOwnFolder(const QString &path)
{
    const QString cleanPath = QDir::cleanPath(path);
    const auto make = [](int parent, const char *name) { ::mkdirat(parent, name, 0700); };
    return isShared(cleanPath) && walkShared(cleanPath, make, closeToOthers).isValid();
}

bool isPrivateFolder(const QString &path)
{
    const QString cleanPath = QDir::cleanPath(path);
    const Descriptor folder(
        ::open(QFile::encodeName(cleanPath).constData(), folderFlags | O_NOFOLLOW));
    const std::optional<mode_t> mode = modeOfOwn(folder);
    return mode && (*mode & othersBits) == 0 && isTrustedFolder(cleanPath);
}

bool makePrivateFolder(const QString &path)
{
    const QString cleanPath = QDir::cleanPath(path);
    if (isShared(cleanPath))
        return makeOwnFolder(cleanPath) && isPrivateFolder(cleanPath);
    QDir().mkpath(folderOf(cleanPath));
    ::mkdir(QFile::encodeName(cleanPath).constData(), 0700);
    return isPrivateFolder(cleanPath);
}

bool replaceFile(const QString &path, const QByteArray &content)
{
    // A file system writes out at once what takes the place of another file: fifty pictures that
    // have not changed since the last start would double the time of this one.
    QFile present;
    if (!QFileInfo(path).isSymLink() && openRegularFile(present, path)
        && present.size() == content.size() && present.readAll() == content)
        return true;
    // As any program's new file: the umask takes away what others may not do.
    return replaceIn(Descriptor(::open(QFile::encodeName(folderOf(path)).constData(), folderFlags)),
                     path, content, 0666);
}

bool replaceOwnFile(const QString &path, const QByteArray &content)
{
    return replaceIn(openOwnFolder(folderOf(path)), path, content, 0600);
}
