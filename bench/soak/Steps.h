#pragma once

#include "World.h"

#include <functional>
#include <vector>

namespace brindlecam::soak {

/// One thing that a person does.
struct Step {
    const char* name;
    Situation where; ///< it is done
    int weight;      ///< how often, beside the others there
    std::function<void(World&)> act;
    std::function<bool(const World&)> isPossible = [](const World&) { return true; };
};

[[nodiscard]] std::vector<Step> captureSteps();
[[nodiscard]] std::vector<Step> markSteps();
[[nodiscard]] std::vector<Step> pinSteps();
[[nodiscard]] std::vector<Step> programSteps();
[[nodiscard]] std::vector<Step> drawerSteps();
[[nodiscard]] std::vector<Step> settingsSteps();
/// All of them.
[[nodiscard]] std::vector<Step> allSteps();

} // namespace brindlecam::soak
