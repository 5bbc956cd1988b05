#pragma once

#include "platform/WindowList.h"

namespace brindlecam {

/// The windows as the window manager stacks them (EWMH), or the children of the root window when
/// none runs. All windows are asked about at once: a list costs two or three round trips, however
/// long it is.
class X11WindowList final : public WindowList {
public:
    [[nodiscard]] std::vector<WindowEntry> frontToBack() const override;
};

} // namespace brindlecam
