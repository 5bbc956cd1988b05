#include "Pastes.h"

#include <QtEndian>

#include <xcb/xfixes.h>

#include <poll.h>

#include <cstring>

namespace brindlecam::bench {

namespace {

constexpr std::chrono::milliseconds kPatience{10000};
constexpr std::chrono::milliseconds kCalm{1000}; // no offer for that long: there will be none

} // namespace

Pastes::Pastes(desktop::Desktop& desktop)
    : m_connection(desktop.name())
    , m_clipboard(desktop.clipboard())
    , m_png(m_connection.atom("image/png"))
    , m_text(m_connection.atom("UTF8_STRING"))
{
    auto* const connection = m_connection.raw();
    const auto* const extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        qFatal("the X server reports no selections");
    m_selectionNotify =
        static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    const desktop::Owned<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        connection, xcb_xfixes_query_version(connection, 5, 0), nullptr));
    xcb_xfixes_select_selection_input(connection, m_connection.root(),
                                      m_connection.atom("CLIPBOARD"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    m_connection.sync();
}

void Pastes::forget()
{
    m_connection.sync();
    (void)claims();
}

std::optional<Clock::time_point> Pastes::await(xcb_atom_t wanted)
{
    const auto deadline = Clock::now() + kPatience;
    while (Clock::now() < deadline) {
        if (claims() > 0 && offers(wanted))
            return Clock::now();
        sleep(std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()));
    }
    return {};
}

int Pastes::countOffers()
{
    int offers = 0;
    auto last = Clock::now();
    while (Clock::now() - last < kCalm) {
        if (const int more = claims(); more > 0) {
            offers += more;
            last = Clock::now();
        }
        sleep(kCalm);
    }
    return offers;
}

QByteArray Pastes::readPng()
{
    return m_clipboard.read("image/png").value_or(QByteArray());
}

QString Pastes::readText()
{
    return m_clipboard.text().value_or(QString());
}

int Pastes::claims()
{
    int any = 0;
    while (const desktop::Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.raw())})
        any += (event->response_type & 0x7f) == m_selectionNotify ? 1 : 0;
    return any;
}

void Pastes::sleep(std::chrono::milliseconds patience) const
{
    pollfd readable{xcb_get_file_descriptor(m_connection.raw()), POLLIN, 0};
    poll(&readable, 1, static_cast<int>(std::max<std::int64_t>(0, patience.count())));
}

bool Pastes::offers(xcb_atom_t wanted)
{
    // Their names would have to be asked for one by one, while the clock runs.
    const QByteArray targets = m_clipboard.read("TARGETS").value_or(QByteArray());
    for (qsizetype at = 0; at + 4 <= targets.size(); at += 4) {
        xcb_atom_t target = 0;
        std::memcpy(&target, targets.constData() + at, sizeof(target));
        if (target == wanted)
            return true;
    }
    return false;
}

QSize pngSize(const QByteArray& png)
{
    constexpr qsizetype kSizeAt = 16; // behind the signature and the head of the first chunk
    if (png.size() < kSizeAt + 8)
        return {};
    return {qFromBigEndian<qint32>(png.constData() + kSizeAt),
            qFromBigEndian<qint32>(png.constData() + kSizeAt + 4)};
}

} // namespace brindlecam::bench
