#pragma once

#include "platform/HotKeys.h"
#include "platform/x11/connection/PressFilter.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/connection/X11Keyboard.h"
#include "platform/x11/keys/KeyGrab.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace brindlecam {

/// Hot keys as passive grabs on the root window; the answer comes within the call. Main thread;
/// what it has handed out may outlive it, and is dead then.
class X11HotKeys final : public HotKeys {
public:
    explicit X11HotKeys(std::shared_ptr<X11Events> events);
    ~X11HotKeys() override;

    void bind(const std::vector<HotKeyWish>& wishes, QObject* context, Pressed pressed,
              Done done) override;
    [[nodiscard]] std::unique_ptr<TakenKey> takeKey(PlainKey key,
                                                    std::function<void()> pressed) override;
    [[nodiscard]] std::optional<PressedKey> read(const QKeyEvent& event) const override;

private:
    /// Somebody who hears of some keys. Owns the grab, shared with others of the same keys.
    struct Listener {
        std::vector<std::uint8_t> codes;
        int modifiers = 0;
        QPointer<QObject> context; ///< hears nothing any more once it is gone
        QString name;              ///< what the key stands for
        Pressed pressed;
        std::shared_ptr<x11::KeyGrab> grab;
    };
    class Taken;

    [[nodiscard]] std::shared_ptr<Listener> take(const HotKeyWish& wish, QObject* context,
                                                 Pressed pressed);
    void unbind();
    std::shared_ptr<x11::KeyGrab> grabFor(const Listener& listener) const;
    void grabAgain();
    X11Events::Verdict handle(const xcb_generic_event_t& event);
    [[nodiscard]] bool cameToAMenu(const xcb_key_press_event_t& event) const;
    [[nodiscard]] std::shared_ptr<Listener> listenerFor(const xcb_key_press_event_t& event) const;
    [[nodiscard]] bool changesKeyboard(const xcb_generic_event_t& event) const;

    std::shared_ptr<X11Events> m_events;
    x11::ModifierBits m_bits;
    std::vector<std::weak_ptr<Listener>> m_listeners; ///< in the order they came
    std::vector<std::shared_ptr<Listener>> m_bound;
    x11::PressFilter m_presses;
    QTimer m_regrab;
    QObject m_context; ///< of keys that are dead once this is gone
    std::uint8_t m_xkbEvent = 0;
    X11Events::Subscription m_subscription;
};

} // namespace brindlecam
