#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace brindlecam::desktop {

/// A child process that never outlives the test program, however that ends. Its standard error is
/// passed on only by what `log` collects.
class Process final {
public:
    Process(const QString& program, const QStringList& arguments,
            const QProcessEnvironment& environment);
    /// Asks it to end, and kills it when it does not.
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] qint64 pid() const { return m_process.processId(); }
    /// The next line of standard output that begins with `prefix`, without its end; empty when the
    /// process ends or falls silent before.
    [[nodiscard]] QByteArray awaitLine(const QByteArray& prefix = {});
    /// Everything written to standard error so far.
    [[nodiscard]] const QByteArray& log();

    /// SIGTERM, then waits; false when the process had to be killed.
    bool end();
    /// SIGKILL, then waits.
    void kill();
    /// Waits for the process to end by itself; false when it still runs.
    [[nodiscard]] bool waitForEnd();
    /// The exit code; -1 after a signal or while it still runs.
    [[nodiscard]] int exitCode() const;

private:
    QProcess m_process;
    QByteArray m_log;
};

} // namespace brindlecam::desktop
