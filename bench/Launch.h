#pragma once

#include "Eyes.h"

#include <QByteArrayList>
#include <QProcessEnvironment>
#include <QStringList>

#include <sys/types.h>

#include <vector>

namespace brindlecam::bench {

/// A command with a stopwatch: everything is laid out beforehand, so that the clock starts where
/// the new process does.
class Launch final {
public:
    Launch(const QString& program, const QStringList& arguments,
           const QProcessEnvironment& environment);

    /// Starts it once more. Returns the moment just before.
    Clock::time_point start();
    /// Waits until it ends; its exit code.
    int wait();

private:
    QByteArrayList m_words;
    QByteArrayList m_variables;
    std::vector<char*> m_argv;
    std::vector<char*> m_environment;
    pid_t m_pid = 0;
};

} // namespace brindlecam::bench
