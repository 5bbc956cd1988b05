#include "desktop/support/Process.h"

#include "desktop/support/Patience.h"

#include <csignal>

#include <sys/prctl.h>
#include <unistd.h>

namespace brindlecam::desktop {

Process::Process(const QString& program, const QStringList& arguments,
                 const QProcessEnvironment& environment)
{
    m_process.setProcessEnvironment(environment);
    m_process.setChildProcessModifier([] {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        setpgid(0, 0); // keys on the terminal are not for it: it ends when we do
    });
    m_process.start(program, arguments);
    if (!m_process.waitForStarted(kPatience))
        qFatal("%s does not start: %s", qPrintable(program), qPrintable(m_process.errorString()));
}

Process::~Process()
{
    end();
}

bool Process::isRunning() const
{
    return m_process.state() == QProcess::Running;
}

QByteArray Process::awaitLine(const QByteArray& prefix)
{
    while (m_process.canReadLine() || m_process.waitForReadyRead(kPatience)) {
        while (m_process.canReadLine()) {
            QByteArray line = m_process.readLine().trimmed();
            if (line.startsWith(prefix))
                return line;
        }
    }
    return {};
}

const QByteArray& Process::log()
{
    m_log += m_process.readAllStandardError();
    return m_log;
}

bool Process::end()
{
    if (!isRunning())
        return true;
    m_process.terminate();
    if (m_process.waitForFinished(kPatience))
        return true;
    kill();
    return false;
}

void Process::kill()
{
    m_process.kill();
    m_process.waitForFinished(kPatience);
}

bool Process::waitForEnd()
{
    return waitUntil([this] { return !isRunning(); });
}

int Process::exitCode() const
{
    if (m_process.state() != QProcess::NotRunning || m_process.exitStatus() != QProcess::NormalExit)
        return -1;
    return m_process.exitCode();
}

} // namespace brindlecam::desktop
