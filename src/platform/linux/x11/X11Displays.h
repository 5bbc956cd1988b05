#pragma once

#include "platform/Displays.h"

#include <QObject>

class QScreen;

namespace brindlecam {

/// The monitors that RandR reports, with the scale of the QScreen of the same name.
class X11Displays final : public Displays {
public:
    X11Displays();

    [[nodiscard]] std::vector<ScreenInfo> screens() const override;
    [[nodiscard]] std::optional<QPoint> pointer() const override;
    void setOnChange(std::function<void()> changed) override;

private:
    void watch(QScreen* screen);
    /// Notes a change; a burst of them is told once.
    void noteChange();

    std::function<void()> m_changed;
    bool m_changeNoted = false;
    QObject m_context; ///< ends the connections with us
};

} // namespace brindlecam
