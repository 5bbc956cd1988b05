#include "Launch.h"

#include <QFile>

#include <spawn.h>
#include <sys/wait.h>

namespace brindlecam::bench {

namespace {

/// The strings as the system takes them; they are the list's.
std::vector<char*> pointers(QByteArrayList& strings)
{
    std::vector<char*> all;
    for (QByteArray& string : strings)
        all.push_back(string.data());
    all.push_back(nullptr);
    return all;
}

} // namespace

Launch::Launch(const QString& program, const QStringList& arguments,
               const QProcessEnvironment& environment)
    : m_words{QFile::encodeName(program)}
{
    for (const QString& argument : arguments)
        m_words << argument.toLocal8Bit();
    for (const QString& variable : environment.toStringList())
        m_variables << variable.toLocal8Bit();
    m_argv = pointers(m_words);
    m_environment = pointers(m_variables);
}

Clock::time_point Launch::start()
{
    const auto now = Clock::now();
    if (::posix_spawn(&m_pid, m_argv.front(), nullptr, nullptr, m_argv.data(),
                      m_environment.data()) != 0)
        qFatal("%s can't be started", m_argv.front());
    return now;
}

int Launch::wait()
{
    int status = 0;
    ::waitpid(m_pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace brindlecam::bench
