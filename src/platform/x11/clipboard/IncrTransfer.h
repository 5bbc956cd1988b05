#pragma once

#include <QByteArray>

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>

namespace brindlecam::x11 {

/// One large content on its way to one requestor, chunk by chunk: the next one is written when the
/// requestor has deleted the last one (ICCCM 2.7.2). The selection's thread.
class IncrTransfer final {
public:
    using Clock = std::chrono::steady_clock;

    struct Place {
        xcb_window_t requestor;
        xcb_atom_t property;

        bool operator==(const Place&) const = default;
    };

    /// `bytes` are shared, not copied.
    IncrTransfer(xcb_connection_t* connection, Place place, xcb_atom_t type, QByteArray bytes);

    /// Announces the transfer in the requestor's property; `incr` is the atom of that name.
    void announce(xcb_atom_t incr);

    /// Contents larger than this go in chunks.
    [[nodiscard]] static std::uint32_t chunkSize(xcb_connection_t* connection);

    /// The requestor has deleted the property. True when it has everything.
    [[nodiscard]] bool advance();

    [[nodiscard]] const Place& place() const { return m_place; }
    /// When a requestor that has fallen silent is given up.
    [[nodiscard]] Clock::time_point deadline() const { return m_deadline; }

private:
    xcb_connection_t* m_connection;
    Place m_place;
    xcb_atom_t m_type;
    QByteArray m_bytes;
    qsizetype m_sent = 0;
    bool m_ended = false; ///< the empty chunk that ends the transfer was written
    Clock::time_point m_deadline;
};

} // namespace brindlecam::x11
