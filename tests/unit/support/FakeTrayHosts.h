#pragma once

#include "base/Listeners.h"
#include "platform/TrayHosts.h"

#include <utility>

namespace brindlecam::test {

/// A tray that comes and goes when the test says so.
class FakeTrayHosts final : public TrayHosts {
public:
    bool there = false;
    std::function<void()> onListen; ///< runs whenever a listener comes

    [[nodiscard]] bool available() const override { return there; }
    void whenChanged(QObject* context, std::function<void()> changed) override
    {
        if (onListen)
            onListen();
        m_listeners.add(context, std::move(changed));
    }
    [[nodiscard]] bool anybodyListens() const { return m_listeners.any(); }

    void become(bool available)
    {
        there = available;
        m_listeners.tell();
    }

private:
    Listeners m_listeners;
};

} // namespace brindlecam::test
