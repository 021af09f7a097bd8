// SPDX-License-Identifier: MIT

#include "fuzz.h"

#include "kovakit-qt/single-application/instance-message_p.h"

#include <QtEndian>

// What another process sends to the first instance: the input as it is, and as a text in pieces.

namespace {

InstanceMessageReader::State stateByDefinition(const QByteArray &bytes)
{
    if (bytes.size() < 4)
        return InstanceMessageReader::Partial;
    quint32 length = 0;
    for (const char byte : bytes.left(4))
        length = length << 8 | uchar(byte);
    if (length > maxInstanceMessage)
        return InstanceMessageReader::TooLong;
    return bytes.size() - 4 < int(length) ? InstanceMessageReader::Partial
                                          : InstanceMessageReader::Complete;
}

void checkAnyBytes(const QByteArray &bytes)
{
    InstanceMessageReader whole;
    const InstanceMessageReader::State state = whole.add(bytes);
    expect(state == stateByDefinition(bytes), "a message is read as it is defined");
    InstanceMessageReader inPieces;
    InstanceMessageReader::State last = InstanceMessageReader::Partial;
    for (const char byte : bytes) {
        last = inPieces.add(QByteArray(1, byte));
        if (last != InstanceMessageReader::Partial)
            break;
    }
    expect(state == last, "pieces make the same message");
    if (state == InstanceMessageReader::Complete)
        expectEqual(inPieces.text(), whole.text(), "Pieces make another text.");
}

void checkText(const QString &text)
{
    const QByteArray content = text.toUtf8();
    QByteArray message(sizeof(quint32), '\0');
    qToBigEndian(quint32(content.size()), message.data());
    message += content;
    InstanceMessageReader reader;
    expect(reader.add(message.left(message.size() / 2)) == InstanceMessageReader::Partial,
           "half a message is none");
    expect(reader.add(message.mid(message.size() / 2)) == InstanceMessageReader::Complete,
           "a whole message is one");
    expectEqual(reader.text(), text, "Another text arrives.");
}

} // namespace

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    startFuzzing(argc, argv);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    checkAnyBytes(bytesOf(data, size));
    // Without what is no UTF-8.
    checkText(QString::fromUtf8(textOf(data, size).toUtf8()));
    return 0;
}
