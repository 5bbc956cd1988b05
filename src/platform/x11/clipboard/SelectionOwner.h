#pragma once

#include "base/Executor.h"
#include "platform/Pasteboard.h"
#include "platform/x11/clipboard/IncrTransfer.h"
#include "platform/x11/clipboard/OfferedContent.h"
#include "platform/x11/clipboard/SelectionAtoms.h"

#include <xcb/xcb.h>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace brindlecam::x11 {

/// Owns CLIPBOARD on one connection and answers who asks for it, as chapter 2 of the ICCCM has it.
/// Everything happens on the selection's thread, which passes the events of the connection in.
///
/// What was asked for before a newer content came, or before another client took the selection, is
/// still answered with what was there then.
///
/// Held by a shared pointer, because bytes may be ready only after the connection is lost.
class SelectionOwner final : public std::enable_shared_from_this<SelectionOwner> {
public:
    using Clock = IncrTransfer::Clock;

    /// Somebody who waits for a content to be taken.
    struct Client {
        std::function<void(ClipboardFate)> taken;       ///< called once, on the selection's thread
        std::shared_ptr<const std::atomic_bool> leaves; ///< true: waits no longer, so take nothing
    };
    /// What a lost connection leaves to the next one.
    struct Estate {
        std::shared_ptr<OfferedContent> content; ///< null: nothing of ours was on the clipboard
        std::optional<Client> client;            ///< none: it was on the clipboard
    };

    /// `pool` runs what makes bytes; `post` runs a task on the selection's thread while this lives.
    SelectionOwner(xcb_connection_t* connection, Executor pool, Executor post);
    ~SelectionOwner();
    SelectionOwner(const SelectionOwner&) = delete;
    SelectionOwner& operator=(const SelectionOwner&) = delete;

    /// Takes the selection for this content with a fresh time of the server.
    void take(ClipboardContent content, Client client);

    /// Offers a concealed content once more, not concealed.
    void reveal();

    /// The connection is lost: what there was, for another owner to take over.
    [[nodiscard]] Estate leave();
    /// Offers again what an earlier connection has left, unless somebody else has the clipboard by
    /// now; what is still to be taken is taken from anybody.
    void inherit(Estate estate);

    /// Asks the clipboard manager to keep the content. `done` is called once: when it has, or at
    /// once when there is none or the selection isn't ours. Only what came a moment ago, and is not
    /// concealed, is held for those who keep what they see, unasked.
    void handOver(std::function<void()> done);

    void handle(const xcb_generic_event_t& event);

    /// When something is to be given up next; none while nothing waits.
    [[nodiscard]] std::optional<Clock::time_point> deadline() const;
    /// Gives up requestors that have been silent for too long, and waiting for more of them.
    void giveUpOverdue();

private:
    using Content = std::shared_ptr<OfferedContent>;
    struct Request {
        xcb_selection_request_event_t event;
        Content content;
    };
    /// Somebody who is about to end.
    struct Farewell {
        std::function<void()> done;
        std::optional<Clock::time_point> until; ///< none: until the clipboard manager answers
    };

    void askForTime();
    void own(xcb_timestamp_t time);
    void ownAnew(xcb_timestamp_t time);
    void ownAgain(xcb_timestamp_t time);
    void offered(xcb_timestamp_t time);
    void keepConcealed();
    void lose();
    void propertyChanged(const xcb_property_notify_event_t& event);
    void requested(const xcb_selection_request_event_t& event);

    [[nodiscard]] bool isReady(const Request& request);
    void answerWaiting();
    void answer(const Request& request);
    [[nodiscard]] bool answerOne(const Request& request, xcb_atom_t target, xcb_atom_t property);
    [[nodiscard]] bool answerMultiple(const Request& request, xcb_atom_t property);
    void deliver(const Request& request, xcb_atom_t property, OfferedContent::Bytes bytes);
    void notify(const xcb_selection_request_event_t& event, xcb_atom_t property);
    [[nodiscard]] bool isOurs();

    void watch(xcb_window_t requestor, std::uint32_t events);
    void sayFarewell();
    void dropTransfersOf(xcb_window_t requestor);

    xcb_connection_t* m_connection;
    SelectionAtoms m_atoms;
    Executor m_pool;
    Executor m_post;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    /// Waits for the server's time; without a client it is the content, to be offered again.
    std::optional<Estate> m_taking;
    Content m_content;                          ///< null: the selection isn't ours
    xcb_timestamp_t m_since = XCB_CURRENT_TIME; ///< when the content came
    xcb_timestamp_t m_taken = XCB_CURRENT_TIME; ///< when it was last offered
    std::vector<Request> m_waiting;             ///< for bytes that are being made
    std::vector<IncrTransfer> m_transfers;
    Clock::time_point m_seenBy; ///< by then everybody has seen what may be kept
    std::optional<Farewell> m_farewell;
};

} // namespace brindlecam::x11
