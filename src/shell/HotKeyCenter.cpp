#include "shell/HotKeyCenter.h"

#include "shell/Actions.h"

#include <utility>

namespace brindlecam {

HotKeyCenter::HotKeyCenter(HotKeys& hotKeys, const Actions& actions)
    : m_hotKeys(hotKeys)
    , m_actions(actions)
{
}

void HotKeyCenter::reload()
{
    releaseAll();
    m_failed.clear();
    for (const auto& [id, action] : m_actions.captures) {
        const std::optional<KeyCombo> combo = action.key();
        if (!combo || combo->display.isEmpty() || !action.canRun())
            continue;
        HotKey key = m_hotKeys.registerKey(combo->keyCode, combo->modifiers, action.run);
        if (key)
            m_keys.insert_or_assign(id, std::move(key));
        else
            m_failed.insert(id);
    }
}

void HotKeyCenter::releaseAll()
{
    m_keys.clear();
}

} // namespace brindlecam
