#pragma once

#include "base/Listeners.h"
#include "platform/x11/connection/OwnerWatch.h"

#include <functional>

namespace brindlecam {

/// Whether a compositor runs, which may come and go. Main thread.
class CompositorWatch final {
public:
    CompositorWatch();

    [[nodiscard]] bool runs() const { return m_owner.owned(); }
    /// `changed` runs when another one, or none, runs from then on, as long as `context` lives.
    void whenChanged(QObject* context, std::function<void()> changed);

private:
    Listeners m_listeners;
    OwnerWatch m_owner;
};

} // namespace brindlecam
