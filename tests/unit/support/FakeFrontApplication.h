#pragma once

#include "platform/FrontApplication.h"

namespace brindlecam::test {

/// Counts who asked for the focus to be remembered and given back.
class FakeFrontApplication final : public FrontApplication {
public:
    int remembered = 0;
    int givenBack = 0;

    void remember() override { ++remembered; }
    void giveBack() override { ++givenBack; }
};

} // namespace brindlecam::test
