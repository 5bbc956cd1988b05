#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace brindlecam::desktop {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// Owns a reply, error or event that xcb allocated.
template <typename T>
using Owned = std::unique_ptr<T, FreeDeleter>;

/// One client's connection to an X server: what the tests see, they see as a stranger to the
/// program under test. One thread.
class Connection final {
public:
    /// Aborts the test run when the server does not answer: nothing can be tested then.
    explicit Connection(const QString& display);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] xcb_connection_t* raw() const { return m_connection; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *m_screen; }
    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }

    /// An atom by name, looked up once per name.
    [[nodiscard]] xcb_atom_t atom(const QByteArray& name) const;
    [[nodiscard]] QByteArray atomName(xcb_atom_t atom) const;
    /// A property of 32-bit items, empty when absent.
    [[nodiscard]] std::vector<std::uint32_t> property32(xcb_window_t window,
                                                        const QByteArray& name) const;
    /// Who owns a selection such as CLIPBOARD; 0 when nobody does.
    [[nodiscard]] xcb_window_t selectionOwner(const QByteArray& selection) const;
    /// Every code of the keyboard that carries this keysym (XK_… of X11/keysym.h), best first.
    [[nodiscard]] std::vector<xcb_keycode_t> keycodes(xcb_keysym_t keysym) const;
    /// What a key code types without modifiers.
    [[nodiscard]] xcb_keysym_t keysym(xcb_keycode_t code) const;

    /// Whether another client holds a grab of this combination on the root window (exactly these
    /// XCB_MOD_MASK_… bits): true as soon as a hot key is registered.
    [[nodiscard]] bool isKeyGrabbedByOther(xcb_keysym_t keysym, std::uint16_t modifiers) const;
    /// Whether a window manager that follows the EWMH runs now.
    [[nodiscard]] bool hasWindowManager() const;

    /// Everything sent so far has been carried out by the server when this returns.
    void sync() const;

private:
    xcb_connection_t* m_connection = nullptr;
    const xcb_screen_t* m_screen = nullptr;
    mutable QHash<QByteArray, xcb_atom_t> m_atoms;
    mutable QHash<xcb_atom_t, QByteArray> m_atomNames;
};

} // namespace brindlecam::desktop
