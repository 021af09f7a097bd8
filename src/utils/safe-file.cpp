#include "safe-file_p.h"

#include <QDir>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

bool isOwnFolder(const Descriptor &folder)
{
    struct stat status = {};
    if (!folder.isValid() || ::fstat(folder.get(), &status) != 0 || status.st_uid != ::geteuid())
        return false;
    const mode_t othersMayWrite = status.st_mode & (S_IWGRP | S_IWOTH);
    return othersMayWrite == 0
        || ::fchmod(folder.get(), status.st_mode & 07777 & ~(S_IWGRP | S_IWOTH)) == 0;
}

Descriptor openOwnFolder(const QString &path)
{
    const QString shared = QDir::cleanPath(QDir::tempPath());
    if (!path.startsWith(shared + QLatin1Char('/'))) {
        Descriptor folder(::open(QFile::encodeName(path).constData(), folderFlags | O_NOFOLLOW));
        return isOwnFolder(folder) ? std::move(folder) : Descriptor();
    }
    Descriptor folder(::open(QFile::encodeName(shared).constData(), folderFlags));
    for (const QString &name : path.mid(shared.size() + 1).split(QLatin1Char('/'))) {
        if (!folder.isValid())
            break;
        Descriptor next(
            ::openat(folder.get(), QFile::encodeName(name).constData(), folderFlags | O_NOFOLLOW));
        folder = isOwnFolder(next) ? std::move(next) : Descriptor();
    }
    return folder;
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

bool replaceOwnFile(const QString &path, const QByteArray &content)
{
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    const QByteArray name = QFile::encodeName(path.mid(slash + 1));
    if (path.contains(QChar::Null) || name.isEmpty() || name == "." || name == "..")
        return false;

    const QString folderPath = slash < 0 ? QStringLiteral(".") : path.left(qMax(slash, 1));
    const Descriptor folder = openOwnFolder(QDir::cleanPath(folderPath));
    if (!folder.isValid())
        return false;

    const QByteArray aside =
        ".part-" + QByteArray::number(QRandomGenerator::global()->generate64(), 36);
    Descriptor file(::openat(folder.get(), aside.constData(),
                             O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!file.isValid())
        return false;
    const bool isWritten = writeAll(file.get(), content);
    if (file.close() && isWritten
        && ::renameat(folder.get(), aside.constData(), folder.get(), name.constData()) == 0)
        return true;
    ::unlinkat(folder.get(), aside.constData(), 0);
    return false;
}
