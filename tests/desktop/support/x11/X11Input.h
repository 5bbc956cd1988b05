#pragma once

#include "desktop/support/Input.h"
#include "desktop/support/x11/Connection.h"

#include <QElapsedTimer>

#include <vector>

namespace brindlecam::desktop {

/// Hands by XTEST: the server cannot tell their events from real ones.
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

private:
    void fake(std::uint8_t type, std::uint8_t detail);
    void keyEvent(std::uint8_t type, Qt::Key key);
    void passMillisecond() const;

    Connection m_connection;
    std::vector<std::uint8_t> m_downKeys;
    std::vector<std::uint8_t> m_downButtons;
    QElapsedTimer m_lastRelease;
};

} // namespace brindlecam::desktop
