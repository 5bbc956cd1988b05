#pragma once

#include <functional>
#include <memory>

namespace brindlecam {

/// One registered key combination; destroying it gives the combination back.
class HotKeyRegistration {
public:
    virtual ~HotKeyRegistration() = default;
};

/// System-wide key combinations. Main thread.
class HotKeys {
public:
    virtual ~HotKeys() = default;

    /// Registers a combination (virtual key code, KeyModifier bits). `pressed` runs on the main
    /// thread once per physical press, however long the key is held. Null when the system refuses,
    /// usually because another program holds the combination; where several keys have the same code
    /// (F13 is also Print Screen), only when it refuses them all.
    [[nodiscard]] virtual std::unique_ptr<HotKeyRegistration>
    registerKey(int keyCode, int modifiers, std::function<void()> pressed) = 0;
};

} // namespace brindlecam
