#pragma once

#include "desktop/support/Desktop.h"
#include "desktop/support/PrivateFolders.h"
#include "desktop/support/Process.h"

#include <QJsonObject>
#include <QProcessEnvironment>
#include <QStringList>

#include <memory>

namespace brindlecam::desktop {

/// How a second copy of the program ended.
struct CommandResult {
    int exitCode = -1; ///< -1: a signal ended it, or it never ended
    QString output;
    QString error;
};

/// The real program on a test's desktop, in folders of its own. The binary is the one named by the
/// environment variable BRINDLECAM_PROGRAM.
class ProgramUnderTest final {
public:
    /// In a home that goes with it, or in one that stays.
    explicit ProgramUnderTest(const Desktop& desktop, const QString& home = {});

    [[nodiscard]] const PrivateFolders& folders() const { return m_folders; }
    /// For variables and settings to add before the start.
    [[nodiscard]] QProcessEnvironment& environment() { return m_environment; }
    /// How many pixels a point has, as in "1.5", or on each monitor, as in "LEFT=1;RIGHT=1.5".
    void setScales(const QString& scales);
    /// Replaces settings.json. Unless the keys are given, the welcome counts as seen and nobody
    /// asks for updates; start() writes that much by itself.
    void writeSettings(QJsonObject settings);
    /// settings.json as it stands.
    [[nodiscard]] QJsonObject settings() const;

    /// A command that every copy is started through from now on, as in {"setpriv", "--…"}: it must
    /// become the program, which is appended with its arguments.
    void setLauncher(const QStringList& command) { m_launcher = command; }

    /// Starts the program and waits until it answers other copies.
    void start(const QStringList& arguments = {});
    /// Starts it without waiting for anything.
    void launch(const QStringList& arguments = {});
    /// Where a program in the runtime folder listens to other copies on its display.
    [[nodiscard]] QString socket() const;
    /// Whether it listens to other copies by now.
    [[nodiscard]] bool isReady() const { return isRunning() && isAnswering(); }
    /// Whether this or another copy on its display listens by now.
    [[nodiscard]] bool isAnswering() const;
    [[nodiscard]] bool isRunning() const { return m_process && m_process->isRunning(); }
    [[nodiscard]] qint64 pid() const { return m_process->pid(); }

    /// Says a line to it as copies of the program do, and returns the exit code that it answers; -1
    /// when no answer comes.
    [[nodiscard]] int answerTo(const QByteArray& line) const;

    /// Runs a second copy with these arguments to its end, in the same folders.
    [[nodiscard]] CommandResult command(const QStringList& arguments) const;
    /// Starts a copy that nobody waits for.
    [[nodiscard]] std::unique_ptr<Process> another(const QStringList& arguments) const;

    /// Asks it to quit (SIGTERM) and returns its exit code; -1 when it had to be killed.
    int quit();
    /// SIGKILL, as a crash would.
    void kill();
    /// Waits until it ends by itself.
    [[nodiscard]] bool waitForEnd() { return m_process->waitForEnd(); }
    [[nodiscard]] int exitCode() const { return m_process->exitCode(); }
    /// What the program wrote to standard error, of all runs.
    [[nodiscard]] QString log() const;

private:
    [[nodiscard]] QStringList commandLine(const QStringList& arguments) const;

    PrivateFolders m_folders;
    QProcessEnvironment m_environment;
    QStringList m_launcher;
    std::unique_ptr<Process> m_process;
    QString m_earlierLog;
};

} // namespace brindlecam::desktop
