#include "platform/x11/clipboard/Mailbox.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace brindlecam::x11 {

Mailbox::Mailbox()
    : m_descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
}

Mailbox::~Mailbox()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool Mailbox::post(Task task)
{
    const std::lock_guard lock(m_mutex);
    if (m_closed)
        return false;
    m_tasks.push_back(std::move(task));
    eventfd_write(m_descriptor, 1);
    return true;
}

void Mailbox::close()
{
    std::vector<Task> dropped;
    const std::lock_guard lock(m_mutex);
    m_closed = true;
    dropped.swap(m_tasks);
}

void Mailbox::wait() const
{
    pollfd ready{m_descriptor, POLLIN, 0};
    while (::poll(&ready, 1, -1) < 0 && errno == EINTR) {
    }
}

void Mailbox::runAll(SelectionOwner* owner)
{
    std::vector<Task> tasks;
    {
        const std::lock_guard lock(m_mutex);
        eventfd_t count = 0;
        eventfd_read(m_descriptor, &count);
        tasks.swap(m_tasks);
    }
    for (const Task& task : tasks)
        task(owner);
}

} // namespace brindlecam::x11
