#include "platform/unix/UnixQuitSignals.h"

#include <QGuiApplication>
#include <QSessionManager>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <utility>

namespace brindlecam {

namespace {

/// Where the handler writes; negative when nobody listens.
std::atomic<int> writeEnd = -1;
static_assert(std::atomic<int>::is_always_lock_free, "used in a signal handler");

extern "C" void brindlecamQuitSignal(int)
{
    const int error = errno;
    const char byte = 1;
    // A full pair means that earlier bytes wait to be read: they say the same.
    [[maybe_unused]] const auto written = ::write(writeEnd, &byte, sizeof byte);
    errno = error;
}

} // namespace

UnixQuitSignals::UnixQuitSignals()
{
    QObject::connect(
        qGuiApp, &QGuiApplication::commitDataRequest, &m_context,
        [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); },
        Qt::DirectConnection);

    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0)
        return;
    // One by one: not every system takes such flags for a pair.
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    m_readEnd = ends[0];
    writeEnd = ends[1];
    m_notifier = std::make_unique<QSocketNotifier>(m_readEnd, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_context,
                     [this] { signalArrived(); });
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        catchSignal(signal);
}

UnixQuitSignals::~UnixQuitSignals()
{
    for (const auto& former : m_former)
        ::sigaction(former.signal, &former.action, nullptr);
    m_notifier.reset();
    if (m_readEnd < 0)
        return;
    ::close(writeEnd.exchange(-1));
    ::close(m_readEnd);
}

void UnixQuitSignals::whenAsked(QObject* context, std::function<void()> quit)
{
    m_listeners.add(context, std::move(quit));
}

void UnixQuitSignals::catchSignal(int signal)
{
    Former former{signal, {}};
    ::sigaction(signal, nullptr, &former.action);
    if (former.action.sa_handler == SIG_IGN)
        return;
    struct sigaction action {};
    action.sa_handler = brindlecamQuitSignal;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    if (::sigaction(signal, &action, nullptr) == 0)
        m_former.push_back(former);
}

void UnixQuitSignals::signalArrived()
{
    std::array<char, 16> bytes{};
    while (::read(m_readEnd, bytes.data(), bytes.size()) > 0) {
    }
    m_listeners.tell();
}

} // namespace brindlecam
