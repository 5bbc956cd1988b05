#pragma once

#include "base/Executor.h"
#include "platform/x11/clipboard/Mailbox.h"
#include "platform/x11/clipboard/SelectionOwner.h"

#include <QThread>

#include <memory>

namespace brindlecam::x11 {

/// The thread and connection that own the clipboard. It sleeps in poll() until somebody asks for
/// something. A connection that is lost is made again at once, and what was offered is offered
/// again; where that fails, each piece of work is another attempt. Made, used and destroyed on the
/// main thread; destroying it gives the clipboard up.
class SelectionThread final {
public:
    /// `pool` runs what makes bytes.
    explicit SelectionThread(Executor pool);
    ~SelectionThread();
    SelectionThread(const SelectionThread&) = delete;
    SelectionThread& operator=(const SelectionThread&) = delete;

    /// Runs a piece of work on the thread; it gets null when the X server can't be reached.
    void post(Mailbox::Task work);

private:
    void run(const Executor& pool);
    /// Serves one connection as long as it lasts; answers with what is left for the next one.
    SelectionOwner::Estate serve(xcb_connection_t* connection, const Executor& pool,
                                 SelectionOwner::Estate inherited);

    std::shared_ptr<Mailbox> m_mailbox = std::make_shared<Mailbox>();
    bool m_quit = false; ///< the thread's own
    std::unique_ptr<QThread> m_thread;
};

} // namespace brindlecam::x11
