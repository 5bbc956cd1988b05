#pragma once

#include "base/Executor.h"
#include "capture/Fate.h"
#include "capture/FileStep.h"
#include "pictures/Rendered.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace brindlecam {

class History;
class Prefs;

/// The way to the disk: pictures are encoded small and written to a file, to the history, or both.
/// Each enters the lane when it is handed in and starts when nothing else comes first; those that
/// go to the same path are written in the order they have entered. FileStep says what happens when.
/// Main thread; encodes and writes on the executor, and outlives whoever waits for an answer.
class FileLane final {
private:
    struct Job;

public:
    struct Places {
        QString path = {};    ///< of a PNG file, or empty
        bool history = false; ///< if the user keeps one
    };
    /// Receives what became of the file and of the history.
    using Answer = std::function<void(const Fate& fate)>;
    using Ticket = std::shared_ptr<Job>;

    FileLane(History& history, const Prefs& prefs, Executor executor);

    /// Nothing happens before start(). Null when the picture goes nowhere.
    [[nodiscard]] Ticket enter(const Rendered& picture, const Places& places);
    /// Encodes and writes. `answer` is called once, after this call.
    void start(const Ticket& ticket, Answer answer);

private:
    /// The only way from one state to another.
    void take(const Ticket& job, FileStep::Event event);

    void encode(const Ticket& job);
    void letPass();
    void write(const Ticket& job);
    void leave(const Ticket& job);
    [[nodiscard]] bool isWayFree(const Job& job) const;
    void onMainThread(std::function<void()> then);

    History& m_history;
    const Prefs& m_prefs;
    const Executor m_executor;
    std::vector<Ticket> m_jobs; ///< in the order they have entered
    QObject m_mainThread;       ///< receives what comes from the executor
};

} // namespace brindlecam
