#pragma once

#include <QByteArray>
#include <QList>

#include <xcb/xcb.h>

#include <chrono>
#include <functional>
#include <optional>

namespace brindlecam::test {

/// Another client that pastes: a connection of its own, asking for CLIPBOARD targets the way the
/// protocol says. Safe on any one thread.
class SelectionReader final {
public:
    static constexpr std::chrono::seconds kPatience{5};

    SelectionReader();
    ~SelectionReader();
    SelectionReader(const SelectionReader&) = delete;
    SelectionReader& operator=(const SelectionReader&) = delete;

    /// Begins to ask for a target, as of this time of the server.
    void ask(const char* target, xcb_timestamp_t time = XCB_CURRENT_TIME);
    /// Waits for the answer to the last ask() and reads all of it; none when it was refused or
    /// nothing came for five seconds.
    [[nodiscard]] std::optional<QByteArray> answer();
    /// Waits until the answer was announced as a transfer in chunks and takes one chunk of it.
    [[nodiscard]] bool beginChunks();
    /// Takes the rest after beginChunks().
    [[nodiscard]] std::optional<QByteArray> finishChunks();
    /// ask() and answer().
    [[nodiscard]] std::optional<QByteArray> read(const char* target);
    /// Names of the targets on offer.
    [[nodiscard]] QList<QByteArray> targets();
    /// Asks for several at once, into properties of their own; their contents, none where refused.
    [[nodiscard]] QList<std::optional<QByteArray>> readMultiple(const QList<QByteArray>& targets);

    /// Takes a selection. False when the server refuses.
    bool own(const char* selection);
    /// Who owns a selection; XCB_WINDOW_NONE when nobody does.
    [[nodiscard]] xcb_window_t ownerOf(const char* selection);
    /// Waits for the next event of one kind.
    [[nodiscard]] xcb_generic_event_t* waitFor(int kind,
                                               const std::function<bool(xcb_generic_event_t*)>& is,
                                               std::chrono::milliseconds patience = kPatience);
    [[nodiscard]] xcb_atom_t atom(const char* name);
    [[nodiscard]] QByteArray nameOf(xcb_atom_t atom);
    [[nodiscard]] QList<xcb_atom_t> atomsOf(xcb_window_t window, xcb_atom_t property);
    [[nodiscard]] xcb_connection_t* connection() const { return m_connection; }
    [[nodiscard]] xcb_window_t window() const { return m_window; }
    /// The connection ends as that of a program that crashes.
    void die();

private:
    [[nodiscard]] bool waitForNotify(xcb_atom_t target);
    [[nodiscard]] QByteArray take(xcb_atom_t property, xcb_atom_t* type);
    [[nodiscard]] bool waitForProperty(xcb_atom_t property);
    [[nodiscard]] std::optional<QByteArray> takeWhole(xcb_atom_t property);

    xcb_connection_t* m_connection = nullptr;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_atom_t m_property = XCB_ATOM_NONE;
    xcb_atom_t m_incr = XCB_ATOM_NONE;
    xcb_atom_t m_asked = XCB_ATOM_NONE;
    QByteArray m_chunks;
};

} // namespace brindlecam::test
