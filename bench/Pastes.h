#pragma once

#include "Eyes.h"

#include <optional>

namespace brindlecam::bench {

/// Another program that wants what the clipboard has as soon as it is there. It sleeps until the
/// server reports a new owner or the old one's renewed claim.
class Pastes final {
public:
    explicit Pastes(desktop::Desktop& desktop);

    /// Forgets everything offered so far.
    void forget();
    /// The first moment at which somebody who asks is told that there is a PNG; none within the
    /// patience.
    [[nodiscard]] std::optional<Clock::time_point> awaitPng() { return await(m_png); }
    /// The same for text.
    [[nodiscard]] std::optional<Clock::time_point> awaitText() { return await(m_text); }
    /// How many pictures were offered since forget(); ends once none has come for a while.
    [[nodiscard]] int countOffers();
    /// The PNG, whole; empty when it is refused.
    [[nodiscard]] QByteArray readPng();
    /// The text; empty when it is refused.
    [[nodiscard]] QString readText();

private:
    /// How often somebody has claimed the clipboard since the last look.
    [[nodiscard]] int claims();
    /// Sleeps until something is reported, at most so long.
    void sleep(std::chrono::milliseconds patience) const;
    [[nodiscard]] bool offers(xcb_atom_t wanted);
    [[nodiscard]] std::optional<Clock::time_point> await(xcb_atom_t wanted);

    desktop::Connection m_connection;
    desktop::Clipboard& m_clipboard;
    std::uint8_t m_selectionNotify = 0;
    xcb_atom_t m_png = 0;
    xcb_atom_t m_text = 0;
};

/// Width and height as the bytes of a PNG tell them.
[[nodiscard]] QSize pngSize(const QByteArray& png);

} // namespace brindlecam::bench
