#include "platform/x11/clipboard/IncrTransfer.h"

#include <algorithm>
#include <utility>

namespace brindlecam::x11 {

namespace {

constexpr std::uint32_t kChunkBytes = 256 * 1024;
constexpr std::uint32_t kRequestHeaderBytes = 32;
constexpr std::chrono::seconds kPatience{20};

} // namespace

IncrTransfer::IncrTransfer(xcb_connection_t* connection, Place place, xcb_atom_t type,
                           QByteArray bytes)
    : m_connection(connection)
    , m_place(place)
    , m_type(type)
    , m_bytes(std::move(bytes))
    , m_deadline(Clock::now() + kPatience)
{
}

void IncrTransfer::announce(xcb_atom_t incr)
{
    const auto size = static_cast<std::uint32_t>(m_bytes.size());
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_place.requestor, m_place.property,
                        incr, 32, 1, &size);
}

std::uint32_t IncrTransfer::chunkSize(xcb_connection_t* connection)
{
    const std::uint32_t largest = xcb_get_maximum_request_length(connection);
    return largest > kChunkBytes / 4 + kRequestHeaderBytes ? kChunkBytes
                                                           : largest * 4 - kRequestHeaderBytes;
}

bool IncrTransfer::advance()
{
    // The end is only reached when the empty chunk was taken, too: its deletion must not be taken
    // for a step of the requestor's next transfer through the same property.
    if (m_ended)
        return true;
    const qsizetype count = std::min<qsizetype>(chunkSize(m_connection), m_bytes.size() - m_sent);
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_place.requestor, m_place.property,
                        m_type, 8, static_cast<std::uint32_t>(count), m_bytes.constData() + m_sent);
    m_sent += count;
    m_deadline = Clock::now() + kPatience;
    if (count == 0) {
        m_ended = true;
        m_bytes.clear();
    }
    return false;
}

} // namespace brindlecam::x11
