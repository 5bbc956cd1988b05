#pragma once

#include "desktop/support/Input.h"
#include "desktop/support/x11/Connection.h"

#include <QElapsedTimer>
#include <QHash>

#include <vector>

namespace brindlecam::desktop {

/// Hands by XTEST: the server cannot tell their events from real ones. A key is looked up when it
/// is first pressed, and again after somebody has changed the keyboard.
class X11Input final : public Input {
public:
    explicit X11Input(const QString& display);
    ~X11Input() override;

    using Input::press;
    using Input::release;
    void press(Qt::Key key) override;
    void release(Qt::Key key) override;
    void moveTo(QPoint pixel) override;
    void press(Button button) override;
    void release(Button button) override;
    [[nodiscard]] QPoint pointer() const override;
    void letGo() override;
    void hurry() override { m_hurries = true; }
    void awaitTaken() override { m_connection.sync(); }
    [[nodiscard]] std::chrono::steady_clock::time_point lastSent() const override
    {
        return m_lastSent;
    }

    /// A key by its code, for those that have no name.
    void tapCode(xcb_keycode_t code);

private:
    void pressCode(xcb_keycode_t code);
    void releaseCode(xcb_keycode_t code);
    /// Sends an event and waits for it, if anybody waits.
    void fake(std::uint8_t type, std::uint8_t detail, QPoint pixel = {});
    void send(std::uint8_t type, std::uint8_t detail, QPoint pixel = {});
    [[nodiscard]] xcb_keycode_t code(Qt::Key key);
    void forgetChangedCodes();
    void passMillisecond() const;

    Connection m_connection;
    QHash<Qt::Key, xcb_keycode_t> m_codes;
    bool m_hurries = false;
    std::chrono::steady_clock::time_point m_lastSent;
    std::vector<std::uint8_t> m_downKeys;
    std::vector<std::uint8_t> m_downButtons;
    QElapsedTimer m_lastRelease;
};

} // namespace brindlecam::desktop
