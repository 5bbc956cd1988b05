#pragma once

#include "platform/HotKey.h"
#include "preferences/CaptureAction.h"

#include <functional>
#include <map>
#include <set>

namespace brindlecam {

class Prefs;

/// Holds the registered shortcuts of the capture actions and knows which the system refused. Main
/// thread.
class HotKeyCenter final {
public:
    HotKeyCenter(HotKeys& hotKeys, const Prefs& prefs);

    /// Performs an action at once; filled by the program before the first reload().
    std::function<void(CaptureAction)> onPressed;
    /// Whether an action's room is there at all; one that is not is left unregistered and is no
    /// failure.
    std::function<bool(CaptureAction)> isAvailable;

    /// The registrations are new: menus that show shortcuts follow.
    std::function<void()> onReloaded;

    /// Registers everything anew from the settings.
    void reload();
    /// Gives every combination back until the next reload(), so that typed keys reach a recorder.
    void releaseAll();

    /// Registered now.
    [[nodiscard]] const std::map<CaptureAction, HotKey>& keys() const { return m_keys; }
    /// Refused by the system at the last reload().
    [[nodiscard]] const std::set<CaptureAction>& failed() const { return m_failed; }

private:
    HotKeys& m_hotKeys;
    const Prefs& m_prefs;
    std::map<CaptureAction, HotKey> m_keys;
    std::set<CaptureAction> m_failed;
};

} // namespace brindlecam
