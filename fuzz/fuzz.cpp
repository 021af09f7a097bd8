// SPDX-License-Identifier: MIT

#include "fuzz.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

std::unique_ptr<QTemporaryDir> scratch;

// Bad input is what the targets are about; a message for each one would be all that they do.
void dropMessages(QtMsgType, const QMessageLogContext &, const QString &) { }

// Texts may differ in characters that nobody sees.
QByteArray visible(const QString &text)
{
    QByteArray result;
    for (const QChar c : text) {
        const bool isPlain =
            c == QLatin1Char('\n') || (c >= QLatin1Char(' ') && c <= QLatin1Char('~'));
        result += isPlain ? QByteArray(1, c.toLatin1())
                          : "\\x" + QByteArray::number(c.unicode(), 16).rightJustified(4, '0');
    }
    return result;
}

} // namespace

void startFuzzing(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_FONT_DPI", "96");
    qInstallMessageHandler(dropMessages);
    scratch = std::make_unique<QTemporaryDir>();
    if (!scratch->isValid())
        std::abort();
    qputenv("TMPDIR", QFile::encodeName(scratch->path()));
    // libFuzzer ends inside of its own main(), with this object still in use.
    static auto *application = new QApplication(*argc, *argv);
    Q_UNUSED(application)
}

QString scratchFolder()
{
    return scratch->path();
}

QByteArray bytesOf(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), int(size)};
}

QString textOf(const std::uint8_t *data, std::size_t size)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(data), int(size));
}

void expectEqual(const QString &actual, const QString &expected, const char *what)
{
    if (actual == expected)
        return;
    std::fprintf(stderr, "%s\n--- actual\n%s\n--- expected\n%s\n---\n", what,
                 visible(actual).constData(), visible(expected).constData());
    std::abort();
}

void expect(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "It does not hold: %s\n", what);
    std::abort();
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    expect(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
           "the target can write its files");
}
