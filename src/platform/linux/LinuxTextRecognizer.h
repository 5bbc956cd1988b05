#pragma once

#include "platform/TextRecognizer.h"

#include <QThread>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

namespace brindlecam {

class TextEngineModule;

/// Reads with Tesseract, on a thread of its own that sleeps while there is nothing to read. Engine
/// and models are given back when nobody has read for a while.
class LinuxTextRecognizer final : public TextRecognizer {
public:
    struct Options {
        QString module; ///< path; empty: where it is usually found
        std::chrono::milliseconds keepFor = std::chrono::minutes(2); ///< without being used
    };

    LinuxTextRecognizer();
    explicit LinuxTextRecognizer(Options options);

    /// Ends the reading under way and waits for the thread.
    ~LinuxTextRecognizer() override;

    void warmUp() override;
    void recognize(const QImage& picture, QObject* context, Done done) override;

    /// Whether engine and models are loaded at present. Any thread.
    [[nodiscard]] bool isLoaded() const { return m_loaded; }

private:
    struct Job;
    using Engine = std::shared_ptr<TextEngineModule>;

    void post(std::shared_ptr<Job> job);
    void run();
    void sleep(std::unique_lock<std::mutex>& lock, Engine& engine);
    void serve(std::shared_ptr<Job> job, Engine& engine);
    [[nodiscard]] Result<QStringList> read(const Job& job, Engine& engine);
    [[nodiscard]] Result<Engine> loaded(Engine& engine);
    void unload(Engine& engine);

    const Options m_options;
    bool m_warmedUp = false;
    std::atomic<bool> m_loaded = false;
    QObject m_home; ///< where results land, on the main thread

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::shared_ptr<Job>> m_jobs; ///< guarded by m_mutex
    std::shared_ptr<Job> m_current;          ///< guarded by m_mutex
    bool m_quit = false;                     ///< guarded by m_mutex
    std::unique_ptr<QThread> m_thread;       ///< made with the first job
};

} // namespace brindlecam
