#pragma once

#include "base/Listeners.h"
#include "platform/QuitSignals.h"

#include <QObject>
#include <QSocketNotifier>

#include <csignal>
#include <memory>
#include <vector>

namespace brindlecam {

/// SIGTERM, SIGINT and SIGHUP, brought to the main loop through a socket pair. A signal that was
/// ignored when we started (nohup) stays ignored. One instance at a time; destroying it gives the
/// signals their former meaning. At the end of a session Qt leaves the main loop by itself; here it
/// is only made sure that the session does not start us again.
class UnixQuitSignals final : public QuitSignals {
public:
    UnixQuitSignals();
    ~UnixQuitSignals() override;
    UnixQuitSignals(const UnixQuitSignals&) = delete;
    UnixQuitSignals& operator=(const UnixQuitSignals&) = delete;

    void whenAsked(QObject* context, std::function<void()> quit) override;

private:
    struct Former {
        int signal;
        struct sigaction action;
    };

    void catchSignal(int signal);
    void signalArrived();

    Listeners m_listeners;
    std::vector<Former> m_former;
    int m_readEnd = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QObject m_context; ///< ends the connections with us
};

} // namespace brindlecam
