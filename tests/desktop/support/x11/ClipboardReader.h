#pragma once

#include "desktop/support/x11/Connection.h"

#include <QByteArray>
#include <QByteArrayList>

#include <optional>

namespace brindlecam::desktop {

/// Pastes like any other program: asks the owner of a selection for its contents, in pieces
/// (INCR) where the owner chooses so. The owner must be another process.
class ClipboardReader final {
public:
    explicit ClipboardReader(const QString& display, QByteArray selection = "CLIPBOARD");

    /// 0 when nobody offers anything.
    [[nodiscard]] xcb_window_t owner() const { return m_connection.selectionOwner(m_selection); }
    /// The names of all offered targets in the owner's order; empty when there is no owner.
    [[nodiscard]] QByteArrayList targets();
    /// The bytes of one target, as in "image/png"; none when refused or not delivered in time.
    [[nodiscard]] std::optional<QByteArray> read(const QByteArray& target);
    /// Whether the last read came in pieces.
    [[nodiscard]] bool lastCameInPieces() const { return m_pieces; }

private:
    [[nodiscard]] bool convert(const QByteArray& target);
    [[nodiscard]] std::optional<QByteArray> takeProperty();
    [[nodiscard]] std::optional<QByteArray> takePieces();
    template <typename Accept>
    [[nodiscard]] bool awaitEvent(Accept accept) const;

    Connection m_connection;
    QByteArray m_selection;
    xcb_window_t m_window = 0;
    xcb_atom_t m_property = 0;
    xcb_atom_t m_type = 0; ///< of the last property taken
    bool m_pieces = false;
};

} // namespace brindlecam::desktop
