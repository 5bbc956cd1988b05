#pragma once

#include "base/Result.h"
#include "reading/TextEngineModule.h"

#include <QImage>
#include <QMetaObject>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace brindlecam {

/// A picture to read, or none: then the engine is only loaded.
struct Reading {
    QImage picture;
    std::atomic<bool> cancelled = false;
    // The main thread's own.
    QPointer<QObject> context;
    QMetaObject::Connection whenGone;
    std::function<void(Result<QStringList>)> done;
};

/// Readings waiting for their turn, and the loop that does them on a thread. Shared by that thread
/// and the main thread, because the thread may outlive whoever asked.
class ReadingQueue final {
public:
    struct Options {
        QString module;                      ///< path of the engine's module
        std::chrono::milliseconds keepFor{}; ///< how long an unused engine is kept
    };

    /// Results are handed to `home`'s thread, as long as close() was not called.
    ReadingQueue(Options options, QObject& home);

    using Readings = std::deque<std::shared_ptr<Reading>>;

    /// Any thread.
    void add(std::shared_ptr<Reading> reading);

    /// Gives up what is under way and answers what waits; run() ends soon. `home` is not touched
    /// any more; what is on its way there arrives. Main thread.
    Readings close();

    /// The same, if this reading is the one under way at this moment. Otherwise nothing is closed
    /// and nothing answered: the next reading, which may have begun meanwhile, must not pay for it.
    /// Main thread.
    [[nodiscard]] std::optional<Readings> closeIfAt(const Reading& reading);

    /// Reads until close(). Sleeps when there is nothing to read, and after a while without engine.
    void run();

    /// Whether engine and models are loaded at present. Any thread.
    [[nodiscard]] bool isLoaded() const { return m_loaded; }

private:
    using Engine = std::shared_ptr<TextEngineModule>;

    [[nodiscard]] Readings close(std::unique_lock<std::mutex> lock);
    void sleep(std::unique_lock<std::mutex>& lock);
    [[nodiscard]] Result<QStringList> read(const Reading& reading);
    [[nodiscard]] Result<QStringList> linesOf(const Reading& reading);
    [[nodiscard]] std::optional<Error> load();
    void unload();
    void answer(std::shared_ptr<Reading> reading, Result<QStringList> lines);

    const Options m_options;
    QObject& m_home;
    std::atomic<bool> m_loaded = false;
    Engine m_engine; ///< the loop's own

    std::mutex m_mutex;
    std::condition_variable m_wake;
    // Guarded by m_mutex.
    Readings m_waiting;
    std::shared_ptr<Reading> m_current;
    bool m_closed = false;
};

} // namespace brindlecam
