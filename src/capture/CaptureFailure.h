#pragma once

#include "base/Error.h"
#include "notices/Alerts.h"

#include <QString>

#include <functional>
#include <optional>

namespace brindlecam {

class CaptureAccess;
class Defaults;

/// What happens after a grab that failed: the system's own permission prompt first, our alert from
/// the second refusal on; where the system knows no such permission, a plain alert at once. Main
/// thread.
class CaptureFailure final {
public:
    enum class Voice {
        alerts, ///< talk to the user
        silent, ///< started with --livetest: failures stay silent
    };

    CaptureFailure(CaptureAccess& access, Alerts& alerts, Defaults& defaults, Voice voice);

    void handle(const Error& error);

    /// Whether a session that can't begin is told about.
    [[nodiscard]] bool speaks() const { return m_voice == Voice::alerts; }

private:
    void show(AlertContent content, std::function<void(std::optional<int>)> done = {});
    void showPermissionAlert(const QString& detail);
    void showGrabAlert(const QString& detail);

    CaptureAccess& m_access;
    Alerts& m_alerts;
    Defaults& m_defaults;
    const Voice m_voice;
    bool m_alertOpen = false; ///< one is enough, however often the key is pressed
};

} // namespace brindlecam
