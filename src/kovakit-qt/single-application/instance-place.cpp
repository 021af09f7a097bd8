// SPDX-License-Identifier: MIT

#include "instance-place_p.h"

#include "kovakit-qt/utils/safe-file_p.h"

#include <QCryptographicHash>
#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QSysInfo>

#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr int shownLetters = 12;
constexpr int hashDigits = 16;

// A cache folder may lie on a server, where other machines lock files too.
QString nameFor(const QString &id)
{
    QString shown = id.section(QLatin1Char('/'), -1);
    shown.remove(QRegularExpression(QStringLiteral("[^a-zA-Z]")));
    const QByteArray hash = QCryptographicHash::hash(
        id.toUtf8() + '\0' + QSysInfo::machineHostName().toUtf8(), QCryptographicHash::Sha1);
    return QLatin1String("/kovakit-") + shown.left(shownLetters) + QLatin1Char('-')
         + QString::fromLatin1(hash.toHex().left(hashDigits));
}

bool fitsSocket(const QString &place)
{
    return QFile::encodeName(place).size() + sizeof(instanceSocketExtension)
        <= sizeof(sockaddr_un::sun_path);
}

} // namespace

QString instancePlace(const QString &id)
{
    const QString name = nameFor(id);
    const QString runtime = QFile::decodeName(qgetenv("XDG_RUNTIME_DIR"));
    if (QDir::isAbsolutePath(runtime) && fitsSocket(runtime + name) && isPrivateFolder(runtime))
        return runtime + name;

    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)
                        + QLatin1String("/kovakit-run");
    const QString temporary =
        QDir::tempPath() + QLatin1String("/kovakit-run-") + QString::number(::geteuid());
    for (const QString &folder : {cache, temporary}) {
        if (fitsSocket(folder + name) && makePrivateFolder(folder))
            return folder + name;
    }
    return QString();
}
