#pragma once

#include "desktop/support/Process.h"

#include <QRect>
#include <QSize>
#include <QString>

#include <memory>
#include <vector>

namespace brindlecam::desktop {

/// One monitor of the virtual screen, in native pixels.
struct Monitor {
    QString name;
    QRect pixels;
};

struct XServerOptions {
    QSize pixels{1280, 800};
    int depth = 24;
    std::vector<Monitor> monitors{}; ///< empty: one monitor as large as the screen
};

/// A private X server without hardware, on a display number of its own choosing.
class XServer final {
public:
    explicit XServer(const XServerOptions& options);

    /// For DISPLAY, as in ":7".
    [[nodiscard]] const QString& display() const { return m_display; }
    /// Makes these the monitors, removing all others. At least one.
    void setMonitors(const std::vector<Monitor>& monitors);

private:
    void xrandr(const QStringList& arguments) const;

    std::unique_ptr<Process> m_process;
    QString m_display;
    QStringList m_named; ///< monitors made by setMonitors()
};

} // namespace brindlecam::desktop
