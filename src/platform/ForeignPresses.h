#pragma once

#include <functional>
#include <memory>

namespace brindlecam {

/// Presses are told as long as this lives.
class PressWatch {
public:
    virtual ~PressWatch() = default;
};

/// Mouse buttons that are pressed over windows of other programs, or over the bare desktop: for
/// panels that a click elsewhere sends away. Main thread. The press reaches whom it is for all the
/// same.
class ForeignPresses {
public:
    virtual ~ForeignPresses() = default;

    /// `pressed` runs at each press of the left or the right button there. Null where this system
    /// does not tell; a panel sees by the focus that it is left then.
    [[nodiscard]] virtual std::unique_ptr<PressWatch> watch(std::function<void()> pressed) = 0;
};

} // namespace brindlecam
