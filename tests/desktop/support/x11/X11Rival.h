#pragma once

#include "desktop/support/Rival.h"
#include "desktop/support/x11/Connection.h"

namespace brindlecam::desktop {

/// A client that grabs.
class X11Rival final : public Rival {
public:
    explicit X11Rival(const QString& display);

    [[nodiscard]] bool takeHotKey(Qt::Key key, Qt::KeyboardModifiers modifiers) override;
    [[nodiscard]] bool takeKeyboard() override;
    [[nodiscard]] bool takePointer() override;
    void giveBackKeyboardAndPointer() override;
    [[nodiscard]] bool gotKeys() override;
    [[nodiscard]] bool isHotKeyTaken(Qt::Key key, Qt::KeyboardModifiers modifiers) override;
    [[nodiscard]] bool isKeyboardTaken() override;
    [[nodiscard]] bool isPointerTaken() override;

    /// Makes one key a hot key with exactly these XCB_MOD_MASK_… bits. False when somebody has it.
    [[nodiscard]] bool takeCode(xcb_keycode_t code, std::uint16_t mask);
    void giveBackHotKeys();

private:
    [[nodiscard]] std::uint8_t grabKeyboard();
    [[nodiscard]] std::uint8_t grabPointer();

    Connection m_connection;
};

} // namespace brindlecam::desktop
