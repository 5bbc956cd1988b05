#pragma once

#include "platform/ForeignPresses.h"
#include "platform/x11/connection/X11Events.h"

#include <memory>

namespace brindlecam {

/// Presses by the raw events of the input extension, which every client may hear whatever has the
/// pointer: they are asked for as long as somebody watches, once for all who do. Main thread.
class X11ForeignPresses final : public ForeignPresses {
public:
    explicit X11ForeignPresses(std::shared_ptr<X11Events> events);

    [[nodiscard]] std::unique_ptr<PressWatch> watch(std::function<void()> pressed) override;

private:
    class Ear;
    class Watch;

    const std::shared_ptr<X11Events> m_events;
    std::weak_ptr<Ear> m_ear; ///< of those who watch; gone with the last of them
};

} // namespace brindlecam
