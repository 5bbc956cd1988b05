#pragma once

#include "capture/Fate.h"

#include <QString>

#include <optional>

namespace brindlecam {

/// What the user is told after a delivery; none: nothing, because what has overtaken it tells.
namespace ResultToast {

enum class Kind { area, fullScreen };

/// After a capture that was to be copied.
[[nodiscard]] std::optional<QString> message(Kind kind, const Fate& fate);

/// The same for a scrolled page of so many pixel rows.
[[nodiscard]] std::optional<QString> pageMessage(int rows, const Fate& fate);

/// Where nothing but the clipboard was to be reached, and was not.
[[nodiscard]] QString notCopied();

/// After the user chose a file; none when it was written.
[[nodiscard]] std::optional<QString> saveMessage(const Fate& fate);

/// After recognised text was to be copied; lines are counted without the empty ones.
[[nodiscard]] std::optional<QString> textMessage(const QString& recognised, ClipboardFate fate);

} // namespace ResultToast

} // namespace brindlecam
