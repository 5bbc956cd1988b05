#pragma once

#include "canvas/Toolbar.h"

#include <vector>

class QRect;

namespace brindlecam {

struct ScreenInfo;

/// What follows a session whose selection is captured for a while.
enum class LongCapture {
    scroll, ///< a page, while it is scrolled
    gif,    ///< a recording
};

/// Takes long captures of a place on a screen, for a session that has ended: a room above. Main
/// thread; rectangles are native pixels of the global desktop.
class LongCaptures {
public:
    virtual ~LongCaptures() = default;

    /// Whether these can be taken; a session offers no others.
    [[nodiscard]] virtual bool available(LongCapture kind) const = 0;
    virtual void start(LongCapture kind, const QRect& native, const ScreenInfo& screen) = 0;
    /// Ends the one that runs, if any, without a result.
    virtual void cancel() = 0;
};

/// Actions of the bars that nobody would take.
[[nodiscard]] std::vector<Toolbar::Action> unavailableActions(const LongCaptures& longCaptures);

} // namespace brindlecam
