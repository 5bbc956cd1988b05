#pragma once

#include "desktop/support/Desktop.h"
#include "desktop/support/Process.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace brindlecam::desktop {

/// A private X server without hardware, on a display number of its own choosing.
class XServer final {
public:
    explicit XServer(const ScreenOptions& options);

    /// For DISPLAY, as in ":7".
    [[nodiscard]] const QString& display() const { return m_display; }
    [[nodiscard]] qint64 pid() const { return m_process->pid(); }
    /// Makes these the monitors, removing all others. At least one.
    void setMonitors(const std::vector<Monitor>& monitors);
    /// Plugs one more in, or gives one of several another place or size in one go.
    void setMonitor(const Monitor& monitor);
    /// Unplugs one of several.
    void removeMonitor(const QString& name);

    /// Gives the only output, and with it the whole screen, another size; it can only shrink.
    void setMode(QSize pixels) const;
    void setKeyboard(const QString& layout, const QString& option) const;

private:
    void setMonitor(const Monitor& monitor, const QString& output);
    void replaceMonitor(const Monitor& monitor, QSize millimetres) const;
    void xrandr(const QStringList& arguments) const;
    static void run(const QString& program, const QStringList& arguments);

    std::unique_ptr<Process> m_process;
    QString m_display;
    QStringList m_named; ///< monitors made by setMonitors()
};

} // namespace brindlecam::desktop
