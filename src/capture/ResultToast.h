#pragma once

#include <QString>

namespace brindlecam {

/// What the user is told after a delivery.
namespace ResultToast {

enum class Kind { area, fullScreen };

/// `requested`: a file in the captures folder was wanted; `saved`: it was written.
struct Fate {
    bool requested = false;
    bool saved = false;
};

[[nodiscard]] QString message(Kind kind, Fate fate);

/// After recognised text went to the clipboard; lines are counted without the empty ones.
[[nodiscard]] QString textMessage(const QString& recognised);

} // namespace ResultToast

} // namespace brindlecam
