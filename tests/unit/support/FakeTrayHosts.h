#pragma once

#include "platform/TrayHosts.h"

#include <utility>

namespace brindlecam::test {

/// A tray that comes and goes when the test says so.
class FakeTrayHosts final : public TrayHosts {
public:
    bool there = false;
    std::function<void()> changed;

    [[nodiscard]] bool available() const override { return there; }
    void setOnChange(std::function<void()> listener) override { changed = std::move(listener); }

    void become(bool available)
    {
        there = available;
        changed();
    }
};

} // namespace brindlecam::test
