#pragma once

#include "platform/HotKeys.h"
#include "platform/x11/connection/PressFilter.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/connection/X11Keyboard.h"
#include "platform/x11/keys/KeyGrab.h"

#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace brindlecam {

/// Hot keys as passive grabs on the root window. Main thread; registrations may outlive it, they
/// are dead then.
class X11HotKeys final : public HotKeys {
public:
    explicit X11HotKeys(std::shared_ptr<X11Events> events);
    ~X11HotKeys() override;

    [[nodiscard]] std::unique_ptr<HotKeyRegistration>
    registerKey(int keyCode, int modifiers, std::function<void()> pressed) override;

private:
    /// What one registration asks for. It owns its grab, shared with others of the same keys.
    struct Wish {
        std::vector<std::uint8_t> codes;
        int modifiers = 0;
        std::function<void()> pressed;
        std::shared_ptr<x11::KeyGrab> grab;
    };
    class Registration;

    std::shared_ptr<x11::KeyGrab> grabFor(const Wish& wish) const;
    void grabAgain();
    X11Events::Verdict handle(const xcb_generic_event_t& event);
    [[nodiscard]] bool cameToAMenu(const xcb_key_press_event_t& event) const;
    [[nodiscard]] std::shared_ptr<Wish> wishFor(const xcb_key_press_event_t& event) const;
    [[nodiscard]] bool changesKeyboard(const xcb_generic_event_t& event) const;

    std::shared_ptr<X11Events> m_events;
    x11::ModifierBits m_bits;
    std::vector<std::weak_ptr<Wish>> m_wishes;
    x11::PressFilter m_presses;
    QTimer m_regrab;
    std::uint8_t m_xkbEvent = 0;
    X11Events::Subscription m_subscription;
};

} // namespace brindlecam
