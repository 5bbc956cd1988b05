#pragma once

#include <functional>
#include <mutex>
#include <vector>

namespace brindlecam::x11 {

class SelectionOwner;

/// Work for the selection's thread, which sleeps in poll(). Safe from any thread.
class Mailbox final {
public:
    /// Gets null when the X server can't be reached.
    using Task = std::function<void(SelectionOwner* owner)>;

    Mailbox();
    ~Mailbox();
    Mailbox(const Mailbox&) = delete;
    Mailbox& operator=(const Mailbox&) = delete;

    /// Hands a task over and wakes the thread. False, and the task is dropped, when the mailbox is
    /// closed.
    bool post(Task task);
    /// Drops what has not run and everything posted from now on.
    void close();

    /// For the thread itself: becomes readable when there are tasks.
    [[nodiscard]] int descriptor() const { return m_descriptor; }
    /// For the thread itself: sleeps until there is one.
    void wait() const;
    /// For the thread itself: runs every task there is.
    void runAll(SelectionOwner* owner);

private:
    std::mutex m_mutex;
    std::vector<Task> m_tasks;
    bool m_closed = false;
    int m_descriptor = -1;
};

} // namespace brindlecam::x11
