#pragma once

#include "platform/CaptureAccess.h"

namespace brindlecam::test {

/// A permission that is given or refused as the test wants, and counts who asks.
class FakeCaptureAccess final : public CaptureAccess {
public:
    bool needed = true;
    bool granted = false;
    int requests = 0;
    int settingsOpened = 0;

    [[nodiscard]] bool needsPermission() const override { return needed; }
    bool request() override
    {
        ++requests;
        return granted;
    }
    void openSettings() override { ++settingsOpened; }
};

} // namespace brindlecam::test
