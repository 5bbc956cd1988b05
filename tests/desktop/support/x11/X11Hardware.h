#pragma once

#include "desktop/support/Desktop.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace brindlecam::desktop {

/// What seems to be plugged into an X server: its monitors, by RandR, and its keyboard.
class X11Hardware final {
public:
    explicit X11Hardware(QString display);

    /// Makes these the monitors, removing all others. At least one.
    void setMonitors(const std::vector<Monitor>& monitors);
    /// Plugs one more in, or gives one of several another place or size in one go.
    void setMonitor(const Monitor& monitor);
    /// Unplugs a monitor. Without any, the server has one again that is as large as the screen.
    void removeMonitor(const QString& name);
    /// Gives the only output, and with it the whole screen, another size; it can only shrink.
    void setMode(QSize pixels) const;
    void setKeyboard(const QString& layout, const QString& option = {}) const;

private:
    void setMonitor(const Monitor& monitor, const QString& output);
    void replaceMonitor(const Monitor& monitor, QSize millimetres) const;
    void xrandr(const QStringList& arguments) const;
    static void run(const QString& program, const QStringList& arguments);

    QString m_display;
    QStringList m_named; ///< monitors made by setMonitor()
};

} // namespace brindlecam::desktop
