#pragma once

#include "platform/TextRecognizer.h"

#include <QThread>

#include <chrono>
#include <memory>

namespace brindlecam {

class ReadingQueue;
struct Reading;

/// Reads with Tesseract, on a thread of its own that sleeps while there is nothing to read. Engine
/// and models are given back when nobody has read for a while.
class LinuxTextRecognizer final : public TextRecognizer {
public:
    struct Options {
        QString module; ///< path; empty: where it is usually found
        std::chrono::milliseconds keepFor = std::chrono::minutes(2); ///< without being used
    };

    LinuxTextRecognizer();
    explicit LinuxTextRecognizer(const Options& options);

    /// Ends the reading under way, and does not wait long for it.
    ~LinuxTextRecognizer() override;

    void warmUp() override;
    void recognize(const QImage& picture, QObject* context, Done done) override;

    /// Whether engine and models are loaded at present.
    [[nodiscard]] bool isLoaded() const;

private:
    void add(std::shared_ptr<Reading> reading);

    bool m_warmedUp = false;
    QObject m_home; ///< where results land, on the main thread
    std::shared_ptr<ReadingQueue> m_queue;
    std::unique_ptr<QThread> m_thread; ///< made with the first reading
};

} // namespace brindlecam
