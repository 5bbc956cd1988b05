#include "Asker.h"

#include "Promise.h"

#include <QAbstractEventDispatcher>
#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace brindlecam::fuzz {

void settle()
{
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}

Asker::Asker(const QString& path)
    : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
{
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un address{};
    BRINDLECAM_PROMISE(static_cast<std::size_t>(name.size()) < sizeof address.sun_path);
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    BRINDLECAM_PROMISE(
        ::connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0);
}

QByteArray Asker::send(const QByteArray& bytes) const
{
    const ssize_t taken =
        ::send(m_socket, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
    return bytes.left(std::max<ssize_t>(taken, 0));
}

void Asker::leave()
{
    if (m_socket >= 0)
        ::close(m_socket);
    m_socket = -1;
}

const QByteArray& Asker::heard() const
{
    listen();
    return m_heard;
}

bool Asker::isHungUpOn() const
{
    listen();
    return m_hungUpOn;
}

void Asker::listen() const
{
    std::array<char, 4096> buffer{};
    for (;;) {
        const ssize_t count = ::recv(m_socket, buffer.data(), buffer.size(), 0);
        if (count <= 0) {
            m_hungUpOn = m_hungUpOn || count == 0 || errno != EAGAIN;
            return;
        }
        m_heard.append(buffer.data(), count);
    }
}

} // namespace brindlecam::fuzz
