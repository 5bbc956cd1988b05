#pragma once

#include "platform/Pasteboard.h"

#include <optional>

namespace brindlecam {

/// What became of one delivery, part by part.
struct Fate {
    enum class Copy { notWanted, done, failed };

    std::optional<ClipboardFate> clipboard = {}; ///< none: it was not to be copied
    Copy file = Copy::notWanted;
    Copy history = Copy::notWanted;
};

} // namespace brindlecam
