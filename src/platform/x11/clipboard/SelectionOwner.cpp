#include "platform/x11/clipboard/SelectionOwner.h"

#include "base/FreedMemory.h"
#include "platform/x11/connection/X11.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace brindlecam::x11 {

namespace {

constexpr std::chrono::milliseconds kUntilSeen{300}; ///< for others to ask for what has changed

xcb_window_t makeWindow(xcb_connection_t* connection)
{
    const xcb_window_t window = xcb_generate_id(connection);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window,
                      xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    return window;
}

/// The server's time begins anew every 49 days.
bool isBefore(xcb_timestamp_t time, xcb_timestamp_t other)
{
    return static_cast<std::int32_t>(time - other) < 0;
}

void overtake(const SelectionOwner::Estate& taking)
{
    if (taking.client)
        taking.client->taken(ClipboardFate::overtaken);
}

} // namespace

SelectionOwner::SelectionOwner(xcb_connection_t* connection, Executor pool, Executor post)
    : m_connection(connection)
    , m_atoms(connection)
    , m_pool(std::move(pool))
    , m_post(std::move(post))
    , m_window(makeWindow(connection))
{
}

SelectionOwner::~SelectionOwner() = default;

void SelectionOwner::take(ClipboardContent content, Client client)
{
    if (const auto earlier = std::exchange(m_taking, std::nullopt))
        overtake(*earlier);
    m_taking =
        Estate{std::make_shared<OfferedContent>(m_connection, std::move(content), m_pool, m_post),
               std::move(client)};
    askForTime();
}

void SelectionOwner::reveal()
{
    if (m_taking) {
        m_taking->content->reveal();
        return;
    }
    // At once: who hands the content over need not wait for the server's time.
    if (!m_content || !m_content->reveal())
        return;
    m_seenBy = Clock::now() + kUntilSeen;
    m_taking = Estate{m_content, std::nullopt};
    askForTime();
}

SelectionOwner::Estate SelectionOwner::leave()
{
    sayFarewell();
    if (m_taking)
        return *std::exchange(m_taking, std::nullopt);
    return {std::exchange(m_content, nullptr), std::nullopt};
}

void SelectionOwner::inherit(Estate estate)
{
    if (!estate.content)
        return;
    if (!estate.client) {
        if (selectionOwner(m_connection, m_atoms.clipboard) != XCB_WINDOW_NONE)
            return;
        estate.client = Client{[](ClipboardFate) {}, std::make_shared<std::atomic_bool>(false)};
    }
    m_taking = std::move(estate);
    askForTime();
}

// Changing nothing of a property is how a client learns the server's time (ICCCM 2.1).
void SelectionOwner::askForTime()
{
    xcb_change_property(m_connection, XCB_PROP_MODE_APPEND, m_window, m_atoms.timestamp,
                        XCB_ATOM_INTEGER, 32, 0, nullptr);
}

void SelectionOwner::own(xcb_timestamp_t time)
{
    if (m_taking->client)
        ownAnew(time);
    else
        ownAgain(time);
}

void SelectionOwner::ownAnew(xcb_timestamp_t time)
{
    if (*m_taking->client->leaves) {
        m_taking.reset();
        keepConcealed();
        return;
    }
    xcb_set_selection_owner(m_connection, m_window, m_atoms.clipboard, time);
    const bool ours = isOurs();
    if (xcb_connection_has_error(m_connection) != 0)
        return; // the next connection takes it
    const Estate taking = *std::exchange(m_taking, std::nullopt);
    if (ours) {
        m_content = taking.content;
        m_since = time;
        offered(time);
    } else {
        keepConcealed();
    }
    taking.client->taken(ours ? ClipboardFate::taken : ClipboardFate::refused);
}

void SelectionOwner::ownAgain(xcb_timestamp_t time)
{
    // Nobody may take it between our look and our word.
    xcb_grab_server(m_connection);
    const bool ours = isOurs();
    if (ours)
        xcb_set_selection_owner(m_connection, m_window, m_atoms.clipboard, time);
    xcb_ungrab_server(m_connection);
    xcb_flush(m_connection);
    m_taking.reset();
    if (ours)
        offered(time);
}

void SelectionOwner::offered(xcb_timestamp_t time)
{
    m_taken = time;
    m_seenBy = Clock::now();
    if (!m_content->isConcealed())
        m_seenBy += kUntilSeen;
}

/// What was to come in its place may be the same picture without what it shows.
void SelectionOwner::keepConcealed()
{
    if (m_content)
        m_content->keepConcealed();
}

void SelectionOwner::lose()
{
    m_content.reset();
    giveFreedMemoryBack(); // a picture is many megabytes
}

void SelectionOwner::handOver(std::function<void()> done)
{
    if (!m_content || selectionOwner(m_connection, m_atoms.clipboardManager) == XCB_WINDOW_NONE) {
        m_farewell = Farewell{std::move(done), m_seenBy};
        giveUpOverdue();
        return;
    }
    m_farewell = Farewell{std::move(done), std::nullopt};
    writeWords(m_connection, m_window, m_atoms.saveTargets, XCB_ATOM_ATOM, m_content->kept());
    xcb_convert_selection(m_connection, m_window, m_atoms.clipboardManager, m_atoms.saveTargets,
                          m_atoms.saveTargets, m_taken);
}

void SelectionOwner::sayFarewell()
{
    if (const auto farewell = std::exchange(m_farewell, std::nullopt))
        farewell->done();
}

void SelectionOwner::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
    case 0: // An error, as a rule because a requestor is gone.
        dropTransfersOf(reinterpret_cast<const xcb_value_error_t&>(event).bad_value);
        break;
    case XCB_DESTROY_NOTIFY:
        dropTransfersOf(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
        break;
    case XCB_PROPERTY_NOTIFY:
        propertyChanged(reinterpret_cast<const xcb_property_notify_event_t&>(event));
        break;
    case XCB_SELECTION_REQUEST:
        requested(reinterpret_cast<const xcb_selection_request_event_t&>(event));
        break;
    case XCB_SELECTION_CLEAR:
        // It may tell of a loss before we took the selection again.
        if (!isOurs())
            lose();
        break;
    case XCB_SELECTION_NOTIFY:
        sayFarewell();
        break;
    }
}

void SelectionOwner::propertyChanged(const xcb_property_notify_event_t& event)
{
    if (event.window == m_window) {
        if (event.atom == m_atoms.timestamp && m_taking)
            own(event.time);
        return;
    }
    if (event.state != XCB_PROPERTY_DELETE)
        return;
    const IncrTransfer::Place place{event.window, event.atom};
    const auto found = std::ranges::find(m_transfers, place, &IncrTransfer::place);
    if (found == m_transfers.end() || !found->advance())
        return;
    m_transfers.erase(found);
    if (std::ranges::none_of(m_transfers, [&](const IncrTransfer& other) {
            return other.place().requestor == event.window;
        }))
        watch(event.window, XCB_EVENT_MASK_NO_EVENT);
}

void SelectionOwner::requested(const xcb_selection_request_event_t& event)
{
    Request request{event, m_content};
    if (request.event.property == XCB_ATOM_NONE)
        request.event.property = event.target; // obsolete clients, ICCCM 2.2
    const bool before = event.time != XCB_CURRENT_TIME && isBefore(event.time, m_since);
    if (!m_content || event.selection != m_atoms.clipboard || before)
        notify(request.event, XCB_ATOM_NONE);
    else if (isReady(request))
        answer(request);
    else
        m_waiting.push_back(std::move(request));
}

bool SelectionOwner::isReady(const Request& request)
{
    std::vector<xcb_atom_t> targets{request.event.target};
    if (request.event.target == m_atoms.multiple) {
        const auto pairs = atomsIn(m_connection, request.event.requestor, request.event.property);
        for (std::size_t i = 0; i + 1 < pairs.size(); i += 2)
            targets.push_back(pairs[i]);
    }
    bool ready = true;
    for (const xcb_atom_t target : targets) {
        const auto madeReady = [owner = weak_from_this()] {
            if (const auto alive = owner.lock())
                alive->answerWaiting();
        };
        ready =
            request.content->prepare(target, madeReady) == OfferedContent::State::ready && ready;
    }
    return ready;
}

void SelectionOwner::answerWaiting()
{
    for (Request& request : std::exchange(m_waiting, {})) {
        if (isReady(request))
            answer(request);
        else
            m_waiting.push_back(std::move(request));
    }
}

void SelectionOwner::answer(const Request& request)
{
    const bool done = request.event.target == m_atoms.multiple
                          ? answerMultiple(request, request.event.property)
                          : answerOne(request, request.event.target, request.event.property);
    notify(request.event, done ? request.event.property : static_cast<xcb_atom_t>(XCB_ATOM_NONE));
}

bool SelectionOwner::answerOne(const Request& request, xcb_atom_t target, xcb_atom_t property)
{
    const xcb_window_t requestor = request.event.requestor;
    if (target == m_atoms.targets) {
        std::vector<xcb_atom_t> all{m_atoms.targets, m_atoms.timestamp, m_atoms.multiple,
                                    m_atoms.saveTargets};
        std::ranges::copy(request.content->targets(), std::back_inserter(all));
        writeWords(m_connection, requestor, property, XCB_ATOM_ATOM, all);
        return true;
    }
    if (target == m_atoms.timestamp) {
        writeWords(m_connection, requestor, property, XCB_ATOM_INTEGER, {m_taken});
        return true;
    }
    if (target == m_atoms.saveTargets) {
        writeWords(m_connection, requestor, property, m_atoms.null, {});
        return true;
    }
    OfferedContent::Bytes bytes = request.content->bytesOf(target);
    if (bytes.type == XCB_ATOM_NONE)
        return false;
    deliver(request, property, std::move(bytes));
    return true;
}

bool SelectionOwner::answerMultiple(const Request& request, xcb_atom_t property)
{
    auto pairs = atomsIn(m_connection, request.event.requestor, property);
    if (pairs.size() < 2)
        return false;
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
        if (pairs[i] == m_atoms.multiple || !answerOne(request, pairs[i], pairs[i + 1]))
            pairs[i + 1] = XCB_ATOM_NONE;
    }
    writeWords(m_connection, request.event.requestor, property, m_atoms.atomPair, pairs);
    return true;
}

void SelectionOwner::deliver(const Request& request, xcb_atom_t property,
                             OfferedContent::Bytes bytes)
{
    const IncrTransfer::Place place{request.event.requestor, property};
    // A requestor that asks again through the same property has forgotten the first answer.
    std::erase_if(m_transfers, [&](const IncrTransfer& known) { return known.place() == place; });
    if (bytes.bytes.size() <= IncrTransfer::chunkSize(m_connection)) {
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, place.requestor, property,
                            bytes.type, 8, static_cast<std::uint32_t>(bytes.bytes.size()),
                            bytes.bytes.constData());
        return;
    }
    watch(place.requestor, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    m_transfers.emplace_back(m_connection, place, bytes.type, std::move(bytes.bytes));
    m_transfers.back().announce(m_atoms.incr);
}

void SelectionOwner::notify(const xcb_selection_request_event_t& event, xcb_atom_t property)
{
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = event.time;
    notice.requestor = event.requestor;
    notice.selection = event.selection;
    notice.target = event.target;
    notice.property = property;
    xcb_send_event(m_connection, 0, event.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&notice));
}

bool SelectionOwner::isOurs()
{
    return selectionOwner(m_connection, m_atoms.clipboard) == m_window;
}

void SelectionOwner::watch(xcb_window_t requestor, std::uint32_t events)
{
    xcb_change_window_attributes(m_connection, requestor, XCB_CW_EVENT_MASK, &events);
}

void SelectionOwner::dropTransfersOf(xcb_window_t requestor)
{
    std::erase_if(m_transfers, [requestor](const IncrTransfer& transfer) {
        return transfer.place().requestor == requestor;
    });
}

std::optional<SelectionOwner::Clock::time_point> SelectionOwner::deadline() const
{
    auto first = m_farewell ? m_farewell->until : std::nullopt;
    for (const IncrTransfer& transfer : m_transfers)
        first = first ? std::min(*first, transfer.deadline()) : transfer.deadline();
    return first;
}

void SelectionOwner::giveUpOverdue()
{
    const auto now = Clock::now();
    std::erase_if(m_transfers,
                  [now](const IncrTransfer& transfer) { return transfer.deadline() <= now; });
    if (m_farewell && m_farewell->until && (!m_content || *m_farewell->until <= now))
        sayFarewell();
}

} // namespace brindlecam::x11
