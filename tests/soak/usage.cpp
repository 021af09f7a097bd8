// SPDX-License-Identifier: MIT

#include "usage.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QWidget>

#include <cstdlib>
#include <malloc.h>
#include <memory>
#include <xcb/res.h>

namespace {

qint64 privateDirtyBytes()
{
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the kernel does not tell how much memory the process has");
    const QByteArray mark = "Private_Dirty:";
    const QByteArray text = file.readAll();
    const QByteArray line = text.mid(text.indexOf(mark) + mark.size());
    return line.left(line.indexOf("kB")).trimmed().toLongLong() * 1024;
}

int entriesOf(const char *folder)
{
    return int(QDir(QString::fromLatin1(folder)).entryList(QDir::AllEntries | QDir::System).size());
}

class Connection
{
public:
    Connection()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        if (xcb_connection_has_error(m_connection))
            qFatal("there is no X server");
    }
    ~Connection() { xcb_disconnect(m_connection); }
    Q_DISABLE_COPY(Connection)

    // What the server keeps for the client that made @p window.
    [[nodiscard]] int resourcesOfOwner(WId window) const
    {
        using Reply = std::unique_ptr<xcb_res_query_client_resources_reply_t, void (*)(void *)>;
        const auto cookie = xcb_res_query_client_resources(m_connection, xcb_window_t(window));
        const Reply reply(xcb_res_query_client_resources_reply(m_connection, cookie, nullptr),
                          std::free);
        if (!reply)
            qFatal("the X server does not tell what it keeps for its clients");
        int count = 0;
        for (auto it = xcb_res_query_client_resources_types_iterator(reply.get()); it.rem > 0;
             xcb_res_type_next(&it))
            count += int(it.data->count);
        return count;
    }

private:
    xcb_connection_t *const m_connection;
};

// Threads end a little after what they worked for.
void settle()
{
    constexpr int milliseconds = 200;
    QTest::qWait(milliseconds);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    malloc_trim(0);
}

} // namespace

Usage Usage::now()
{
    static QWidget known;
    static const WId window = known.winId();
    settle();
    return {privateDirtyBytes(), entriesOf("/proc/self/fd"), entriesOf("/proc/self/task"),
            Connection().resourcesOfOwner(window)};
}

Usage Usage::since(const Usage &before) const
{
    return {bytes - before.bytes, descriptors - before.descriptors, threads - before.threads,
            xResources - before.xResources};
}
