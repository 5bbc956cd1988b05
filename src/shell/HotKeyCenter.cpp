#include "shell/HotKeyCenter.h"

#include "preferences/Prefs.h"

#include <utility>

namespace brindlecam {

HotKeyCenter::HotKeyCenter(HotKeys& hotKeys, const Prefs& prefs)
    : m_hotKeys(hotKeys)
    , m_prefs(prefs)
{
}

void HotKeyCenter::reload()
{
    releaseAll();
    m_failed.clear();
    for (const CaptureAction action : kAllCaptureActions) {
        const std::optional<KeyCombo> combo = m_prefs.combo(action);
        if (!combo || combo->display.isEmpty() || (isAvailable && !isAvailable(action)))
            continue;
        HotKey key = m_hotKeys.registerKey(combo->keyCode, combo->modifiers, [this, action] {
            if (onPressed)
                onPressed(action);
        });
        if (key)
            m_keys.insert_or_assign(action, std::move(key));
        else
            m_failed.insert(action);
    }
    if (onReloaded)
        onReloaded();
}

void HotKeyCenter::releaseAll()
{
    m_keys.clear();
}

} // namespace brindlecam
