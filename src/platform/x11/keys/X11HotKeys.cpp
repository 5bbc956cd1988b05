#include "platform/x11/keys/X11HotKeys.h"

#include "base/KeyCodes.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/Xkb.h"

#include <QKeyEvent>
#include <QWidget>

#include <utility>

namespace brindlecam {

namespace {

constexpr int kFirstKeyCode = 8; ///< of X against evdev

// Qt knows what letters are that X has names of its own for; its other keys type nothing.
QString characterOf(const QKeyEvent& event)
{
    const bool isCharacter = event.key() > Qt::Key_Space && event.key() < Qt::Key_Escape;
    const auto character = static_cast<char32_t>(event.key());
    return isCharacter ? QString::fromUcs4(&character, 1) : QString();
}

std::vector<std::uint8_t> keyCodes(int virtualKeyCode)
{
    std::vector<std::uint8_t> codes;
    for (const int evdev : KeyCodes::toEvdev(virtualKeyCode))
        codes.push_back(static_cast<std::uint8_t>(evdev + kFirstKeyCode));
    return codes;
}

bool isPlainKey(std::uint8_t code)
{
    const auto keyCode = KeyCodes::fromEvdev(code - kFirstKeyCode);
    return keyCode == KeyCodes::kEscape || keyCode == KeyCodes::kReturn ||
           keyCode == KeyCodes::kKeypadEnter;
}

} // namespace

/// Keeps its listener alive.
class X11HotKeys::Taken final : public TakenKey {
public:
    explicit Taken(std::shared_ptr<Listener> listener)
        : m_listener(std::move(listener))
    {
    }

private:
    std::shared_ptr<Listener> m_listener;
};

X11HotKeys::X11HotKeys(std::shared_ptr<X11Events> events)
    : m_events(std::move(events))
    , m_bits(x11::ModifierBits::read())
{
    if (const auto* xkb = xcb_get_extension_data(x11::connection(), &xcb_xkb_id);
        xkb && xkb->present)
        m_xkbEvent = xkb->first_event;
    // One change of layout comes as several events.
    m_regrab.setSingleShot(true);
    QObject::connect(&m_regrab, &QTimer::timeout, &m_regrab, [this] { grabAgain(); });
    m_subscription = m_events->listen([this](const auto& event) { return handle(event); });
}

X11HotKeys::~X11HotKeys() = default;

void X11HotKeys::bind(const std::vector<HotKeyWish>& wishes, QObject* context, Pressed pressed,
                      Done done)
{
    unbind();
    QStringList refused;
    for (const HotKeyWish& wish : wishes) {
        if (auto listener = take(wish, context, pressed))
            m_bound.push_back(std::move(listener));
        else
            refused << wish.name;
    }
    done(refused);
}

void X11HotKeys::unbind()
{
    while (!m_bound.empty())
        m_bound.pop_back();
}

std::unique_ptr<TakenKey> X11HotKeys::takeKey(PlainKey key, std::function<void()> pressed)
{
    HotKeyWish wish;
    wish.keyCode = static_cast<int>(key);
    // Whoever holds it hears of it, as long as this is there to tell.
    auto listener =
        take(wish, &m_context, [pressed = std::move(pressed)](const QString&) { pressed(); });
    return listener ? std::make_unique<Taken>(std::move(listener)) : nullptr;
}

std::optional<PressedKey> X11HotKeys::read(const QKeyEvent& event) const
{
    const std::uint32_t code = event.nativeScanCode();
    const auto modifiers = x11::modifierKeys();
    if (code >= modifiers.size() || modifiers[code])
        return std::nullopt;
    const std::optional<int> keyCode = KeyCodes::fromEvdev(static_cast<int>(code) - kFirstKeyCode);
    if (!keyCode)
        return std::nullopt;
    const auto state = static_cast<std::uint16_t>(event.nativeModifiers());
    const QString characters = x11::plainCharacters(static_cast<std::uint8_t>(code), state);
    return PressedKey{*keyCode, m_bits.modifiersOf(state),
                      characters.isEmpty() ? characterOf(event) : characters};
}

std::shared_ptr<X11HotKeys::Listener> X11HotKeys::take(const HotKeyWish& wish, QObject* context,
                                                       Pressed pressed)
{
    auto listener = std::make_shared<Listener>(Listener{
        keyCodes(wish.keyCode), wish.modifiers, context, wish.name, std::move(pressed), nullptr});
    listener->grab = grabFor(*listener);
    if (!listener->grab)
        return nullptr;
    std::erase_if(m_listeners, [](const auto& known) { return known.expired(); });
    m_listeners.push_back(listener);
    return listener;
}

std::shared_ptr<x11::KeyGrab> X11HotKeys::grabFor(const Listener& listener) const
{
    x11::KeyGrab::Keys keys{listener.codes, m_bits.lockStates()};
    for (std::uint16_t& state : keys.states)
        state |= m_bits.stateOf(listener.modifiers);
    for (const auto& known : m_listeners) {
        const auto other = known.lock();
        if (other && other->grab && other->grab->keys() == keys)
            return other->grab;
    }
    return x11::KeyGrab::take(std::move(keys));
}

void X11HotKeys::grabAgain()
{
    const auto bits = x11::ModifierBits::read();
    if (bits == m_bits)
        return;
    m_bits = bits;
    for (const auto& known : m_listeners) {
        if (const auto listener = known.lock())
            listener->grab.reset();
    }
    for (const auto& known : m_listeners) {
        if (const auto listener = known.lock())
            listener->grab = grabFor(*listener);
    }
}

X11Events::Verdict X11HotKeys::handle(const xcb_generic_event_t& event)
{
    if (changesKeyboard(event))
        m_regrab.start(0);
    if (kindOf(event) != XCB_KEY_PRESS && kindOf(event) != XCB_KEY_RELEASE)
        return X11Events::Verdict::pass;
    const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
    const bool ours = key.event == x11::root() || cameToAMenu(key);
    if (kindOf(event) == XCB_KEY_PRESS) {
        const auto listener = ours ? listenerFor(key) : nullptr;
        // The share held here outlives a callback that drops its own listener.
        if (listener && m_presses.pressed(key.detail, key.time) && listener->context)
            listener->pressed(listener->name);
    } else {
        // Whichever window it came to: a grab may have moved to another one meanwhile.
        m_presses.released(key.detail, key.time);
    }
    return ours ? X11Events::Verdict::swallow : X11Events::Verdict::pass;
}

/// An open menu of ours has the whole keyboard, so that no key grab takes effect and the hot key
/// comes to the menu's window. Whether the menu is still open does not count: it may have closed by
/// itself while the key was on its way. Plain keys with which it is left or chosen from are the
/// menu's. Keys that come to a window of ours which is no widget are KeySink's, and for nobody.
bool X11HotKeys::cameToAMenu(const xcb_key_press_event_t& event) const
{
    constexpr std::uint8_t kPress = XCB_KEY_PRESS; // and not one that another program has made up
    if (event.response_type != kPress || !QWidget::find(event.event))
        return false;
    const auto listener = listenerFor(event);
    return listener && (listener->modifiers != 0 || !isPlainKey(event.detail));
}

std::shared_ptr<X11HotKeys::Listener>
X11HotKeys::listenerFor(const xcb_key_press_event_t& event) const
{
    for (std::size_t i = m_listeners.size(); i-- > 0;) {
        auto listener = m_listeners[i].lock();
        if (listener && listener->grab &&
            m_bits.relevant(event.state) == m_bits.stateOf(listener->modifiers) &&
            listener->grab->holds(event.detail))
            return listener;
    }
    return nullptr;
}

bool X11HotKeys::changesKeyboard(const xcb_generic_event_t& event) const
{
    if (kindOf(event) == XCB_MAPPING_NOTIFY)
        return true;
    if (m_xkbEvent == 0 || kindOf(event) != m_xkbEvent)
        return false;
    const auto xkbKind = reinterpret_cast<const xcb_xkb_map_notify_event_t&>(event).xkbType;
    return xkbKind == XCB_XKB_MAP_NOTIFY || xkbKind == XCB_XKB_NEW_KEYBOARD_NOTIFY;
}

} // namespace brindlecam
