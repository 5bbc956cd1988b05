#pragma once

#include "Eyes.h"

#include "desktop/support/ClipboardReader.h"

#include <optional>

namespace brindlecam::bench {

/// Another program that wants the picture as soon as the clipboard has it. It sleeps until the
/// server reports a new owner or the old one's renewed claim.
class Pastes final {
public:
    explicit Pastes(const QString& display);

    /// Forgets everything offered so far.
    void forget();
    /// The first moment at which somebody who asks is told that there is a PNG; none within the
    /// patience.
    [[nodiscard]] std::optional<Clock::time_point> awaitPng();
    /// How many pictures were offered since forget(); ends once none has come for a while.
    [[nodiscard]] int countOffers();
    /// The PNG, whole; empty when it is refused.
    [[nodiscard]] QByteArray readPng();

private:
    /// How often somebody has claimed the clipboard since the last look.
    [[nodiscard]] int claims();
    /// Sleeps until something is reported, at most so long.
    void sleep(std::chrono::milliseconds patience) const;
    [[nodiscard]] bool offersPng();

    desktop::Connection m_connection;
    desktop::ClipboardReader m_reader;
    std::uint8_t m_selectionNotify = 0;
    xcb_atom_t m_png = 0;
};

/// Width and height as the bytes of a PNG tell them.
[[nodiscard]] QSize pngSize(const QByteArray& png);

} // namespace brindlecam::bench
