#pragma once

#include "app/InstanceServer.h"

#include <QLockFile>
#include <QString>

#include <memory>

namespace brindlecam {

/// Sees to it that a user's session has one running copy, and lets every later copy hand what it
/// was started for over to it. Who holds the lock is the running copy, also before it listens: of
/// two copies started at once one gets it and the other keeps knocking. What a killed run left
/// behind is taken over at once. Keep the object as long as the program runs. Main thread.
class SingleInstance final {
public:
    /// Meets the other copies in `folder`, which only the user may enter; without one (empty) there
    /// are none to meet.
    explicit SingleInstance(const QString& folder = runtimeFolder());
    ~SingleInstance();

    [[nodiscard]] static QString runtimeFolder();

    enum class Outcome {
        first,       ///< no other copy runs: this one does now
        performed,   ///< the running copy did it
        unavailable, ///< the running copy can't do that
        unanswered,  ///< the running copy does not answer
    };

    /// The first step, before the application object is made: becomes the running copy or hands the
    /// request to it. Waits for a copy that is still starting, and no more than two seconds for the
    /// answer of one that listens.
    [[nodiscard]] Outcome handOver(const InstanceRequest& request);

    /// The second step, in the first copy and with an application object: from now on requests come
    /// in. False when the folder can't hold a socket; the program then runs without hand-over.
    bool listen(InstanceServer::Handler handler);

private:
    [[nodiscard]] bool takeLock();

    const bool m_hasFolder;
    const QString m_socket;
    QLockFile m_lock;
    std::unique_ptr<InstanceServer> m_server;
};

} // namespace brindlecam
