#include "shell/HotKeyCenter.h"

#include "shell/Actions.h"

namespace brindlecam {

HotKeyCenter::HotKeyCenter(HotKeys& hotKeys, const Actions& actions)
    : m_hotKeys(hotKeys)
    , m_actions(actions)
{
}

HotKeyCenter::~HotKeyCenter()
{
    onAnswered = [] {};
    releaseAll();
}

void HotKeyCenter::reload()
{
    std::vector<HotKeyWish> wishes;
    for (const auto& [id, action] : m_actions.captures) {
        const std::optional<KeyCombo> combo = action.key();
        if (combo && !combo->display.isEmpty() && action.canRun())
            wishes.push_back({rawValue(id), action.title, combo->keyCode, combo->modifiers});
    }
    m_failed.clear();
    bind(wishes);
}

void HotKeyCenter::releaseAll()
{
    bind({});
}

void HotKeyCenter::bind(const std::vector<HotKeyWish>& wishes)
{
    m_bound.clear();
    m_context = std::make_unique<QObject>();
    m_hotKeys.bind(
        wishes, m_context.get(), [this](const QString& name) { pressed(name); },
        [this, wishes](const QStringList& refused) { answered(wishes, refused); });
}

void HotKeyCenter::pressed(const QString& name) const
{
    if (const auto id = captureAction(name))
        m_actions.captures.at(*id).run();
}

void HotKeyCenter::answered(const std::vector<HotKeyWish>& wishes, const QStringList& refused)
{
    for (const HotKeyWish& wish : wishes) {
        if (const auto id = captureAction(wish.name))
            (refused.contains(wish.name) ? m_failed : m_bound).insert(*id);
    }
    onAnswered();
}

} // namespace brindlecam
