#pragma once

#include <QColor>
#include <QUrl>

#include <array>
#include <chrono>
#include <optional>

namespace brindlecam::Config {

/// Brand colour: selection border, handles, hovered window.
inline const QColor leafGreen = QColor::fromRgbF(0.18F, 0.7F, 0.3F);

/// Annotation colours in the order of their swatches.
inline const std::array palette{
    QColor::fromRgbF(0.93F, 0.18F, 0.18F), leafGreen,
    QColor::fromRgbF(1.0F, 0.8F, 0.0F),    QColor::fromRgbF(0.1F, 0.52F, 0.96F),
    QColor::fromRgbF(0.1F, 0.1F, 0.1F),    QColor::fromRgbF(1.0F, 1.0F, 1.0F),
};

/// From a menu choice or a reopen to the capture: the menu must have closed.
inline constexpr std::chrono::milliseconds menuToCapture{300};
inline constexpr std::chrono::milliseconds countdownTick{1000};
/// From the end of the countdown to its action: the panel must be off the screen.
inline constexpr std::chrono::milliseconds countdownHandOff{150};
inline constexpr std::chrono::milliseconds toastShown{1000};
inline constexpr std::chrono::milliseconds toastFade{300};

/// Where new versions are announced; none when the program was built without a web host.
[[nodiscard]] std::optional<QUrl> updateFeedUrl();

/// The dark of messages and labels; alpha is each surface's own.
inline QColor panelColor(double alpha)
{
    return QColor::fromRgbF(0.1F, 0.1F, 0.1F, static_cast<float>(alpha));
}

} // namespace brindlecam::Config
