#pragma once

#include "desktop/support/Patience.h"
#include "desktop/support/x11/Connection.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QList>

#include <chrono>
#include <optional>

namespace brindlecam::desktop {

/// Another client that pastes: a connection of its own, asking the owner of CLIPBOARD for its
/// targets the way the protocol says, step by step where a test wants to come between. Safe on any
/// one thread.
class SelectionReader final {
public:
    explicit SelectionReader(const QString& display);

    /// Begins to ask for a target, as of this time of the server.
    void ask(const QByteArray& target, xcb_timestamp_t time = XCB_CURRENT_TIME);
    /// Waits for the answer to the last ask() and reads all of it; none when it was refused or
    /// nothing came in time.
    [[nodiscard]] std::optional<QByteArray> answer();
    /// Waits until the answer was announced as a transfer in pieces (INCR) and takes one of it.
    [[nodiscard]] bool beginPieces();
    /// Takes the rest after beginPieces().
    [[nodiscard]] std::optional<QByteArray> finishPieces();
    /// Whether the last answer came in pieces.
    [[nodiscard]] bool lastCameInPieces() const { return m_inPieces; }
    /// ask() and answer().
    [[nodiscard]] std::optional<QByteArray> read(const QByteArray& target);
    /// Names of the targets on offer in the owner's order; empty when nobody offers anything.
    [[nodiscard]] QByteArrayList targets();
    /// Asks for several at once, into properties of their own; their contents, none where refused.
    [[nodiscard]] QList<std::optional<QByteArray>> readMultiple(const QByteArrayList& targets);

    /// Who owns the clipboard; XCB_WINDOW_NONE when nobody does.
    [[nodiscard]] xcb_window_t owner() const { return m_connection.selectionOwner("CLIPBOARD"); }
    /// Takes a selection, the clipboard or another one. False when the server refuses.
    bool own(const QByteArray& selection);
    /// Waits for the next event of one kind; null when none comes in time.
    [[nodiscard]] Owned<xcb_generic_event_t>
    await(int kind, std::chrono::milliseconds patience = std::chrono::milliseconds(kPatience));

    [[nodiscard]] const Connection& connection() const { return m_connection; }
    [[nodiscard]] xcb_window_t window() const { return m_window; }

private:
    template <typename Accept>
    [[nodiscard]] Owned<xcb_generic_event_t>
    awaitThat(int kind, Accept accept,
              std::chrono::milliseconds patience = std::chrono::milliseconds(kPatience)) const;
    [[nodiscard]] bool isAnswered() const;
    /// Takes what the property holds once it is written anew; none when that does not happen.
    [[nodiscard]] std::optional<QByteArray> nextPiece();
    /// None when there is no such property.
    [[nodiscard]] std::optional<QByteArray> take(xcb_atom_t property);

    Connection m_connection;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_atom_t m_property = XCB_ATOM_NONE;
    xcb_atom_t m_asked = XCB_ATOM_NONE;
    xcb_atom_t m_type = XCB_ATOM_NONE; ///< of the last property taken
    bool m_inPieces = false;
    QByteArray m_pieces;
};

} // namespace brindlecam::desktop
