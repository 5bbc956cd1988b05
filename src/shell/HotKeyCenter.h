#pragma once

#include "platform/HotKey.h"
#include "preferences/CaptureAction.h"

#include <map>
#include <set>

namespace brindlecam {

struct Actions;

/// Holds the registered shortcuts of the capture actions and knows which the system refused. Main
/// thread.
class HotKeyCenter final {
public:
    /// Both outlive it.
    HotKeyCenter(HotKeys& hotKeys, const Actions& actions);

    /// Registers everything anew from the settings. What can't run is left unregistered and is no
    /// failure.
    void reload();
    /// Gives every combination back until the next reload(), so that typed keys reach a recorder.
    void releaseAll();

    /// Registered now.
    [[nodiscard]] const std::map<CaptureAction, HotKey>& keys() const { return m_keys; }
    /// Refused by the system at the last reload().
    [[nodiscard]] const std::set<CaptureAction>& failed() const { return m_failed; }

private:
    HotKeys& m_hotKeys;
    const Actions& m_actions;
    std::map<CaptureAction, HotKey> m_keys;
    std::set<CaptureAction> m_failed;
};

} // namespace brindlecam
