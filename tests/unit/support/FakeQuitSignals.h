#pragma once

#include "base/Listeners.h"
#include "platform/QuitSignals.h"

#include <utility>

namespace brindlecam::test {

/// Asks the program to end when the test says so.
class FakeQuitSignals final : public QuitSignals {
public:
    std::function<void()> onListen; ///< runs whenever a listener comes

    void whenAsked(QObject* context, std::function<void()> quit) override
    {
        if (onListen)
            onListen();
        m_listeners.add(context, std::move(quit));
    }
    void ask() { m_listeners.tell(); }

private:
    Listeners m_listeners;
};

} // namespace brindlecam::test
