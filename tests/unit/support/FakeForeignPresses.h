#pragma once

#include "platform/ForeignPresses.h"

#include <memory>
#include <utility>

namespace brindlecam::test {

/// Tells of the presses that a test makes up, or of none where it does not tell.
class FakeForeignPresses final : public ForeignPresses {
public:
    bool tells = true; ///< what watch() offers

    [[nodiscard]] std::unique_ptr<PressWatch> watch(std::function<void()> pressed) override
    {
        if (!tells)
            return nullptr;
        auto watch = std::make_unique<Watch>();
        watch->told = std::make_shared<std::function<void()>>(std::move(pressed));
        m_watching = watch->told;
        return watch;
    }

    [[nodiscard]] bool watched() const { return !m_watching.expired(); }
    /// A press over another program's window.
    void press() const
    {
        if (const auto told = m_watching.lock())
            (*told)();
    }

private:
    struct Watch final : PressWatch {
        std::shared_ptr<std::function<void()>> told;
    };

    std::weak_ptr<std::function<void()>> m_watching;
};

} // namespace brindlecam::test
