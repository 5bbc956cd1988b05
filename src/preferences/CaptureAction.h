#pragma once

#include "base/KeyCombo.h"

#include <QString>

#include <array>
#include <optional>

namespace brindlecam {

/// What the user can trigger from anywhere.
enum class CaptureAction { area, fullScreen, recents };

inline constexpr std::array kAllCaptureActions{CaptureAction::area, CaptureAction::fullScreen,
                                               CaptureAction::recents};

/// "area", "fullScreen", "recents": in settings keys and commands.
[[nodiscard]] QString rawValue(CaptureAction action);
[[nodiscard]] std::optional<CaptureAction> captureAction(const QString& rawValue);
/// Menu text.
[[nodiscard]] QString title(CaptureAction action);
/// The shortcut until the user chooses another.
[[nodiscard]] KeyCombo defaultCombo(CaptureAction action);

} // namespace brindlecam
