#pragma once

#include <Qt>

namespace brindlecam::desktop {

/// Another program that wants what only one can have: hot keys, the keyboard, the pointer. Gives
/// all of it back at its end.
class Rival {
public:
    Rival() = default;
    virtual ~Rival() = default;
    Rival(const Rival&) = delete;
    Rival& operator=(const Rival&) = delete;

    /// Makes this combination, exactly, a hot key of its own; as long as such a key is down, it has
    /// the keyboard. False when somebody else has it.
    [[nodiscard]] virtual bool takeHotKey(Qt::Key key, Qt::KeyboardModifiers modifiers) = 0;
    /// Keyboard and pointer, as open menus and games do. False when somebody else has them.
    [[nodiscard]] virtual bool takeKeyboard() = 0;
    [[nodiscard]] virtual bool takePointer() = 0;
    virtual void giveBackKeyboardAndPointer() = 0;
    /// Whether a key press has come to it since the last question.
    [[nodiscard]] virtual bool gotKeys() = 0;

    // Looks, which mean to take it for a moment.
    /// Whether somebody else has this combination: true as soon as a hot key is registered.
    [[nodiscard]] virtual bool isHotKeyTaken(Qt::Key key, Qt::KeyboardModifiers modifiers) = 0;
    [[nodiscard]] virtual bool isKeyboardTaken() = 0;
    [[nodiscard]] virtual bool isPointerTaken() = 0;
};

} // namespace brindlecam::desktop
