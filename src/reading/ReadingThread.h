#pragma once

#include "reading/ReadingQueue.h"

#include <QThread>

#include <memory>
#include <optional>

class QDeadlineTimer;

namespace brindlecam {

/// A queue of readings and the thread that does them, which starts with the first one. Main thread.
class ReadingThread final {
public:
    /// Results are handed to `home`'s thread.
    ReadingThread(ReadingQueue::Options options, QObject& home);

    /// Closes. A thread that has not ended yet goes on without anybody; should it still be busy
    /// when the process ends, that end is abrupt, so that nothing it uses is destroyed beneath it.
    ~ReadingThread();
    ReadingThread(const ReadingThread&) = delete;
    ReadingThread& operator=(const ReadingThread&) = delete;

    void add(std::shared_ptr<Reading> reading);

    /// Gives up what is under way, and answers what waits. The thread ends as soon as it listens.
    ReadingQueue::Readings close();

    /// The same, if this reading is the one under way at this moment; otherwise it does nothing.
    [[nodiscard]] std::optional<ReadingQueue::Readings> closeIfAt(const Reading& reading);

    /// Waits for the end after close(), at most until then; whether it came.
    [[nodiscard]] bool endsBy(const QDeadlineTimer& deadline);

    /// Whether engine and models are loaded at present.
    [[nodiscard]] bool isLoaded() const { return m_queue->isLoaded(); }

private:
    std::shared_ptr<ReadingQueue> m_queue; ///< shared with the thread
    std::unique_ptr<QThread> m_thread;
};

} // namespace brindlecam
