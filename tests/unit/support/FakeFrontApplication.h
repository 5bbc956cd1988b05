#pragma once

#include "platform/FrontApplication.h"

#include <functional>

namespace brindlecam::test {

/// Counts who asked for the focus to be remembered and given back.
class FakeFrontApplication final : public FrontApplication {
public:
    int remembered = 0;
    int givenBack = 0;
    std::function<void()> onGiveBack; ///< runs inside giveBack()

    void remember() override { ++remembered; }
    void giveBack() override
    {
        ++givenBack;
        if (onGiveBack)
            onGiveBack();
    }
};

} // namespace brindlecam::test
