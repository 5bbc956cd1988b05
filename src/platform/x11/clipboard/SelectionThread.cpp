#include "platform/x11/clipboard/SelectionThread.h"

#include "platform/x11/connection/X11.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace brindlecam::x11 {

namespace {

/// Milliseconds for poll(): -1 sleeps until something happens.
int timeoutUntil(const std::optional<IncrTransfer::Clock::time_point>& deadline)
{
    if (!deadline)
        return -1;
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(*deadline - IncrTransfer::Clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(0, left.count()));
}

/// Handles every event there is, those that came in while writing included, so that none waits in
/// xcb's queue while we sleep on the socket.
void handleAll(xcb_connection_t* connection, SelectionOwner& owner)
{
    bool handled = true;
    while (handled) {
        handled = false;
        xcb_flush(connection);
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
            owner.handle(*event);
            handled = true;
        }
    }
}

} // namespace

SelectionThread::SelectionThread(Executor pool)
    : m_thread(QThread::create([this, pool = std::move(pool)] { run(pool); }))
{
    m_thread->setObjectName(QStringLiteral("clipboard"));
    m_thread->start();
}

SelectionThread::~SelectionThread()
{
    m_mailbox->post([this](SelectionOwner*) { m_quit = true; });
    m_thread->wait();
}

void SelectionThread::post(Mailbox::Task work)
{
    m_mailbox->post(std::move(work));
}

void SelectionThread::run(const Executor& pool)
{
    SelectionOwner::Estate estate;
    while (!m_quit) {
        const OwnConnection connection(xcb_connect(nullptr, nullptr));
        if (xcb_connection_has_error(connection.get()) == 0) {
            estate = serve(connection.get(), pool, std::move(estate));
            continue;
        }
        if (const auto client = std::exchange(estate.client, std::nullopt)) {
            client->taken(ClipboardFate::refused);
            estate = {};
        }
        // Whatever is set or revealed meanwhile does not reach it.
        if (estate.content && estate.content->isConcealed())
            estate = {};
        m_mailbox->runAll(nullptr);
        if (!m_quit)
            m_mailbox->wait();
    }
    m_mailbox->close();
}

SelectionOwner::Estate SelectionThread::serve(xcb_connection_t* connection, const Executor& pool,
                                              SelectionOwner::Estate inherited)
{
    const auto owner =
        std::make_shared<SelectionOwner>(connection, pool, [mailbox = m_mailbox](auto task) {
            mailbox->post([task = std::move(task)](SelectionOwner*) { task(); });
        });
    owner->inherit(std::move(inherited));
    while (!m_quit && xcb_connection_has_error(connection) == 0) {
        m_mailbox->runAll(owner.get());
        handleAll(connection, *owner);
        owner->giveUpOverdue();
        if (m_quit)
            break;
        std::array<pollfd, 2> ready{pollfd{xcb_get_file_descriptor(connection), POLLIN, 0},
                                    pollfd{m_mailbox->descriptor(), POLLIN, 0}};
        ::poll(ready.data(), ready.size(), timeoutUntil(owner->deadline()));
    }
    return owner->leave();
}

} // namespace brindlecam::x11
