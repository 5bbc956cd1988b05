#pragma once

#include "preferences/CaptureAction.h"

#include <set>

namespace brindlecam {

/// What the settings ask of the shell above them. Main thread.
class SettingsHost {
public:
    virtual ~SettingsHost() = default;

    /// Takes the hot keys anew, as they are set now.
    virtual void reloadHotKeys() = 0;
    /// Gives them back until they are reloaded, so that typed keys reach a recorder.
    virtual void releaseHotKeys() = 0;
    /// Those that the system has refused since.
    [[nodiscard]] virtual const std::set<CaptureAction>& failedHotKeys() const = 0;

    /// Whether this program can look for new versions.
    [[nodiscard]] virtual bool offersUpdates() const = 0;
    /// Shows the captures folder in the user's file manager.
    virtual void openCapturesFolder() = 0;
};

} // namespace brindlecam
