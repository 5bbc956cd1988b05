#pragma once

#include "shell/InstancePlace.h"
#include "shell/InstanceProtocol.h"
#include "shell/InstanceServer.h"

#include <QDateTime>
#include <QLockFile>

#include <chrono>
#include <functional>
#include <memory>
#include <variant>

namespace brindlecam {

/// Sees to it that a user has one running copy per display, and lets every later copy hand what it
/// was started for over to it. Who holds the lock is the running copy, also before it listens and
/// while it ends: of two copies started at once one gets it and the other keeps knocking, and who
/// comes while a copy ends takes its place. What a killed run left behind is taken over at once.
/// Keep the object as long as the program runs. Main thread.
class SingleInstance final {
public:
    /// How a later copy waits; tests put their own time in place.
    struct Waiting {
        std::chrono::milliseconds answer{BRINDLECAM_ANSWER_PATIENCE}; ///< for one that listens
        std::function<QDateTime()> now = &QDateTime::currentDateTimeUtc;
        std::function<void(std::chrono::milliseconds)> pause = sleep;
    };

    explicit SingleInstance(InstancePlace place = InstancePlace::standard());
    SingleInstance(InstancePlace place, Waiting waiting);
    ~SingleInstance();

    /// No other copy runs: this one does now.
    struct First {};
    /// Another copy holds the lock and can't be reached.
    struct Unanswered {};
    /// What became of it: a reply is the running copy's.
    using Outcome = std::variant<First, InstanceReply, Unanswered>;

    /// The first step, before the application object is made: becomes the running copy or hands the
    /// request to it. Waits for a copy that is starting or about to end, and no more than two
    /// seconds for the answer of one that listens.
    [[nodiscard]] Outcome handOver(const InstanceRequest& request);

    /// The second step, in the first copy and with an application object: from now on requests come
    /// in. False when there is no place for that; the program then runs without hand-over, and
    /// later copies are told so at once.
    bool listen(InstanceServer::Handler handler);

    /// The last step, when the program begins to end: requests are for the next copy, which waits
    /// until this object is gone.
    void hangUp();

private:
    static void sleep(std::chrono::milliseconds time);
    enum class Hold { ours, theirs, impossible };
    [[nodiscard]] Hold takeLock();
    [[nodiscard]] bool isWorthWaiting() const;
    void dateLock(const QDateTime& time) const;

    const InstancePlace m_place;
    const Waiting m_waiting;
    QLockFile m_lock;
    std::unique_ptr<InstanceServer> m_server;
};

} // namespace brindlecam
