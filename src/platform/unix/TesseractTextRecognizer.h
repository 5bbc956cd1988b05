#pragma once

#include "platform/TextRecognizer.h"

#include <chrono>
#include <memory>
#include <vector>

namespace brindlecam {

class ReadingThread;
struct Reading;

/// Reads with Tesseract, on a thread of its own that sleeps while there is nothing to read. Engine
/// and models are given back when nobody has read for a while. A thread whose engine does not hear
/// that its reading is given up is left to itself, and the next reading gets another; after two of
/// them the next one waits.
class TesseractTextRecognizer final : public TextRecognizer {
public:
    struct Options {
        QString module; ///< path; empty: where it is usually found
        std::chrono::milliseconds keepFor = std::chrono::minutes(2); ///< without being used
        /// How long a reading that nobody wants any more may keep the next one waiting. Our own
        /// steps and the reading of words stop within milliseconds; the engine's search for lines
        /// does not listen.
        std::chrono::milliseconds patience{300};
        std::chrono::milliseconds patienceAtTheEnd{1000}; ///< the same, for the program's end
    };

    TesseractTextRecognizer();
    explicit TesseractTextRecognizer(const Options& options);

    /// Ends the reading under way, and does not wait long for it.
    ~TesseractTextRecognizer() override;

    void warmUp() override;
    void recognize(const QImage& picture, QObject* context, Done done) override;

    /// Whether engine and models are loaded at present.
    [[nodiscard]] bool isLoaded() const;

private:
    void add(std::shared_ptr<Reading> reading);

    void giveUp(const std::shared_ptr<Reading>& reading);
    void goOnWithout(const Reading& unwanted);
    [[nodiscard]] std::unique_ptr<ReadingThread> newThread();

    const Options m_options;
    bool m_warmedUp = false;
    QObject m_home; ///< where results land, on the main thread
    std::unique_ptr<ReadingThread> m_thread;
    std::vector<std::unique_ptr<ReadingThread>>
        m_left; ///< closed, but perhaps not yet at their end
};

} // namespace brindlecam
