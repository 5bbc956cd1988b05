#pragma once

#include "base/Listeners.h"
#include "platform/Displays.h"

#include <utility>

namespace brindlecam::test {

/// Displays as a test lays them out.
class FakeDisplays final : public Displays {
public:
    std::vector<ScreenInfo> all;
    mutable int absent = 0; ///< how many times they can't be told, as while they change
    std::optional<QPoint> pointerAt;

    [[nodiscard]] std::vector<ScreenInfo> screens() const override
    {
        if (absent == 0)
            return all;
        --absent;
        return {};
    }
    [[nodiscard]] std::vector<ScreenInfo> layout() const override
    {
        std::vector<ScreenInfo> bare = all;
        for (ScreenInfo& screen : bare)
            screen.visibleFrame = screen.native;
        return bare;
    }
    [[nodiscard]] std::optional<QPoint> pointer() const override { return pointerAt; }
    void whenChanged(QObject* context, std::function<void()> changed) override
    {
        m_listeners.add(context, std::move(changed));
    }

    void change() { m_listeners.tell(); }

private:
    Listeners m_listeners;
};

} // namespace brindlecam::test
