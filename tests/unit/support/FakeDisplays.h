#pragma once

#include "platform/Displays.h"

#include <utility>

namespace brindlecam::test {

/// Displays as a test lays them out.
class FakeDisplays final : public Displays {
public:
    std::vector<ScreenInfo> all;
    std::optional<QPoint> pointerAt;
    std::function<void()> changed;

    [[nodiscard]] std::vector<ScreenInfo> screens() const override { return all; }
    [[nodiscard]] std::vector<ScreenInfo> layout() const override
    {
        std::vector<ScreenInfo> bare = all;
        for (ScreenInfo& screen : bare)
            screen.visibleFrame = screen.native;
        return bare;
    }
    [[nodiscard]] std::optional<QPoint> pointer() const override { return pointerAt; }
    void setOnChange(std::function<void()> listener) override { changed = std::move(listener); }
};

} // namespace brindlecam::test
