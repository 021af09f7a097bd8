// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>

// Takes an HTTP/1 response apart, in whatever pieces it arrives, and holds no more of it than its
// limits allow: what is no content is counted, and too much of it ends the response as failed.
class HttpResponse
{
public:
    // Bytes of everything that is neither content nor the size of a chunk: status lines, fields,
    // interim responses such as "100 Continue", extensions of chunks and trailers, all together.
    static constexpr int maxHeadBytes = 64 * 1024;
    // Header fields; each one that is added is looked for among the others.
    static constexpr int maxFields = 256;

    using Field = QPair<QByteArray, QByteArray>;

    // Goes on with what has arrived.
    void add(const QByteArray &bytes);
    // The connection is closed: nothing comes any more.
    void end();

    // Whether the status and all fields of the final response are there.
    [[nodiscard]] bool hasHead() const { return m_state >= CountedBody; }
    // Whether all of the response is there.
    [[nodiscard]] bool isComplete() const { return m_state == Done; }
    // Whether it is no response, or exceeds a limit, or has been cut off.
    [[nodiscard]] bool isFailed() const { return m_state == Failed; }
    // Whether not even its first byte has arrived.
    [[nodiscard]] bool isUntouched() const { return m_isUntouched; }
    // Whether another request may follow on the connection, once the response is complete.
    [[nodiscard]] bool isPersistent() const { return m_isPersistent; }

    [[nodiscard]] int status() const { return m_status; }
    [[nodiscard]] QByteArray reason() const { return m_reason; }
    [[nodiscard]] QList<Field> fields() const { return m_fields; }

    // The content that has arrived since the last call.
    [[nodiscard]] QByteArray takeContent();

private:
    enum State {
        StatusLine,
        FieldLine,
        Failed,
        // From here on the head is known.
        CountedBody,
        OpenBody,
        ChunkSize,
        ChunkBody,
        ChunkEnd,
        Trailer,
        Done
    };

    [[nodiscard]] bool isInLine() const;
    [[nodiscard]] int allowance() const;
    int addToLine(const QByteArray &bytes, int at);
    int addToContent(const QByteArray &bytes, int at);
    void endLine(const QByteArray &line);
    [[nodiscard]] State afterStatus(const QByteArray &line);
    [[nodiscard]] State afterField(const QByteArray &line);
    [[nodiscard]] State afterHead();
    [[nodiscard]] State afterChunkSize(const QByteArray &line);
    [[nodiscard]] QByteArray value(const char *name) const;

    State m_state = StatusLine;
    bool m_isUntouched = true;
    bool m_isPersistent = false;
    int m_status = 0;
    QByteArray m_reason;
    QList<Field> m_fields;
    QByteArray m_line;
    int m_budget = maxHeadBytes;
    qint64 m_left = 0;
    QByteArray m_content;
};
