#pragma once

#include "platform/x11/grab/PixelBuffer.h"

#include <QImage>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

namespace brindlecam {

/// Lends memory for pictures. Memory that comes back is kept a few seconds for the next picture of
/// the same size, then really freed: a second capture soon after is fast, and nothing is held at
/// rest. Main thread, but the pictures may go on any thread, also after the store itself is gone.
class PixelStore final {
public:
    /// With a coarse timer's five per cent on top this stays below five seconds.
    static constexpr std::chrono::milliseconds kKept{4500};

    using Clock = std::chrono::steady_clock;

    /// The connection must live as long as the store. `kept`: how long memory waits for the next
    /// picture, by the clock `now`; it is asked on whatever thread a picture goes.
    explicit PixelStore(xcb_connection_t* connection, std::chrono::milliseconds kept = kKept,
                        std::function<Clock::time_point()> now = &Clock::now);
    ~PixelStore();
    PixelStore(const PixelStore&) = delete;
    PixelStore& operator=(const PixelStore&) = delete;

    /// Used or fresh memory of exactly this size, its content undefined; null when there is none.
    [[nodiscard]] std::unique_ptr<PixelBuffer> take(PixelBuffer::Kind kind, std::size_t bytes);

    /// Memory that is not needed any more waits for whoever takes the same size next.
    void giveBack(std::unique_ptr<PixelBuffer> buffer);

    /// A picture that owns the buffer and gives it back when its last copy goes.
    [[nodiscard]] QImage wrap(std::unique_ptr<PixelBuffer> buffer, QSize size,
                              qsizetype bytesPerLine, QImage::Format format);

    /// What is kept for the next picture now.
    [[nodiscard]] std::size_t keptBytes() const;

private:
    struct Shelf;
    struct Loan;

    void freeExpired();

    QTimer m_expiry;
    std::shared_ptr<Shelf> m_shelf;
};

} // namespace brindlecam
