#pragma once

#include "World.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace brindlecam::soak {

/// What a fault takes hold of: two that have hold of the same part at a time would hide each other.
enum class Part : std::uint8_t {
    nothing, ///< or not for longer than it takes
    windowManager,
    compositor,
    monitors,
    clipboardManager,
    captures,
    history,
    clock,
};

/// Whether the program runs on through a fault, or another run of it follows.
enum class Run : std::uint8_t { goesOn, another };

/// Something that goes wrong around the program.
struct Fault {
    const char* name;
    const char* does;
    const char* holds; ///< must hold after it, beside what must hold always
    Part part;
    Run run;
    Situation where; ///< it strikes
    std::function<void(World&)> strike;
    /// What has hold of a part lets go of it some steps later; empty when it is over at once.
    std::function<void(World&)> mend{};
    std::function<bool(const World&)> isPossible = [](const World&) { return true; };
};

[[nodiscard]] std::vector<Fault> surroundingsFaults();
[[nodiscard]] std::vector<Fault> monitorFaults();
[[nodiscard]] std::vector<Fault> inputFaults();
[[nodiscard]] std::vector<Fault> clipboardFaults();
[[nodiscard]] std::vector<Fault> folderFaults();
[[nodiscard]] std::vector<Fault> runFaults();
[[nodiscard]] std::vector<Fault> settingsFaults();
/// All of them.
[[nodiscard]] std::vector<Fault> allFaults();

} // namespace brindlecam::soak
