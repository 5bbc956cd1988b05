#pragma once

#include "desktop/support/Desktop.h"
#include "desktop/support/Process.h"

#include <QString>

#include <memory>

namespace brindlecam::desktop {

/// A private X server without hardware, on a display number of its own choosing.
class XServer final {
public:
    /// With one monitor as large as the screen, whatever the options say.
    explicit XServer(const ScreenOptions& options);

    /// For DISPLAY, as in ":7".
    [[nodiscard]] const QString& display() const { return m_display; }
    [[nodiscard]] qint64 pid() const { return m_process->pid(); }

private:
    std::unique_ptr<Process> m_process;
    QString m_display;
};

} // namespace brindlecam::desktop
