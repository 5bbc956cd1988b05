#include "Rest.h"

#include <xcb/res.h>

#include <QDir>
#include <QFile>

namespace brindlecam::bench {

namespace {

constexpr double kKibibytes = 1024;
constexpr double kMebibyte = 1024 * 1024;

QList<QByteArray> linesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QList<QByteArray>();
}

/// The number after the name in a line such as "RssAnon:  1234 kB".
std::optional<qint64> value(const QByteArray& line, const char* name)
{
    if (!line.startsWith(QByteArray(name) + ':'))
        return {};
    return line.mid(line.indexOf(':') + 1).simplified().split(' ').first().toLongLong();
}

} // namespace

Rest::Rest(const QString& display, qint64 pid)
    : m_connection(display)
    , m_pid(pid)
{
}

Rest::Switches Rest::switches() const
{
    Switches found;
    const QString tasks = QStringLiteral("/proc/%1/task").arg(m_pid);
    for (const QString& task : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        qint64 all = 0;
        QByteArray name;
        for (const QByteArray& line : linesOf(QStringLiteral("%1/%2/status").arg(tasks, task))) {
            if (line.startsWith("Name:"))
                name = line.mid(5).trimmed();
            for (const char* kind : {"voluntary_ctxt_switches", "nonvoluntary_ctxt_switches"})
                all += value(line, kind).value_or(0);
        }
        found.insert(task.toLatin1() + ' ' + name, all);
    }
    return found;
}

qint64 Rest::between(const Switches& before, const Switches& after)
{
    qint64 all = 0;
    for (auto thread = after.begin(); thread != after.end(); ++thread)
        all += thread.value() - before.value(thread.key(), 0);
    for (auto thread = before.begin(); thread != before.end(); ++thread) {
        // It woke up to end.
        if (!after.contains(thread.key()))
            ++all;
    }
    return all;
}

Rest::Memory Rest::memory() const
{
    Memory memory;
    for (const QByteArray& line : linesOf(QStringLiteral("/proc/%1/status").arg(m_pid))) {
        if (const auto kib = value(line, "RssAnon"))
            memory.anonymous = double(*kib) / kKibibytes;
        if (const auto kib = value(line, "RssShmem"))
            memory.shared = double(*kib) / kKibibytes;
    }
    memory.segments = untouchedSegmentMebibytes();
    memory.pixmaps = pixmapMebibytes();
    return memory;
}

double Rest::untouchedSegmentMebibytes() const
{
    double mebibytes = 0;
    bool segment = false;
    for (const QByteArray& line : linesOf(QStringLiteral("/proc/%1/smaps").arg(m_pid))) {
        // A mapping begins with its addresses; what follows about it begins with a capital.
        if (!line.isEmpty() && !(line.at(0) >= 'A' && line.at(0) <= 'Z'))
            segment =
                line.contains("/memfd:") || line.contains("/SYSV") || line.contains("/dev/shm/");
        if (!segment)
            continue;
        mebibytes += double(value(line, "Size").value_or(0)) / kKibibytes;
        mebibytes -= double(value(line, "Rss").value_or(0)) / kKibibytes;
    }
    return mebibytes;
}

double Rest::pixmapMebibytes() const
{
    auto* const connection = m_connection.raw();
    const desktop::Owned<xcb_res_query_version_reply_t> version(
        xcb_res_query_version_reply(connection, xcb_res_query_version(connection, 1, 2), nullptr));
    const xcb_res_client_id_spec_t everybody{0, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const desktop::Owned<xcb_res_query_client_ids_reply_t> ids(xcb_res_query_client_ids_reply(
        connection, xcb_res_query_client_ids(connection, 1, &everybody), nullptr));
    if (!version || !ids)
        qFatal("the X server tells nothing about its clients");
    double bytes = 0;
    for (auto id = xcb_res_query_client_ids_ids_iterator(ids.get()); id.rem > 0;
         xcb_res_client_id_value_next(&id)) {
        if (xcb_res_client_id_value_value_length(id.data) == 0 ||
            *xcb_res_client_id_value_value(id.data) != static_cast<std::uint32_t>(m_pid))
            continue;
        const desktop::Owned<xcb_res_query_client_pixmap_bytes_reply_t> reply(
            xcb_res_query_client_pixmap_bytes_reply(
                connection, xcb_res_query_client_pixmap_bytes(connection, id.data->spec.client),
                nullptr));
        if (reply)
            bytes += double(reply->bytes) + double(reply->bytes_overflow) * 4294967296.0;
    }
    return bytes / kMebibyte;
}

} // namespace brindlecam::bench
