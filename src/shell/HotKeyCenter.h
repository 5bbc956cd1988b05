#pragma once

#include "platform/HotKeys.h"
#include "preferences/CaptureAction.h"

#include <QObject>

#include <functional>
#include <memory>
#include <set>
#include <vector>

namespace brindlecam {

struct Actions;

/// Binds the shortcuts of the capture actions and knows which the system refused. Its answer may
/// come later: until then a key is neither bound nor failed, and works if it is pressed. Main
/// thread.
class HotKeyCenter final {
public:
    /// Both outlive it.
    HotKeyCenter(HotKeys& hotKeys, const Actions& actions);
    ~HotKeyCenter();

    /// The system has answered: bound() and failed() are as they will stay. Filled by whoever makes
    /// it.
    std::function<void()> onAnswered = [] {};

    /// Binds everything anew from the settings. What can't run is left unbound and is no failure.
    void reload();
    /// Gives every combination back until the next reload(), so that typed keys reach a recorder.
    void releaseAll();

    /// Bound now, as the system has answered.
    [[nodiscard]] const std::set<CaptureAction>& bound() const { return m_bound; }
    /// Refused by the system at the last reload().
    [[nodiscard]] const std::set<CaptureAction>& failed() const { return m_failed; }

private:
    void bind(const std::vector<HotKeyWish>& wishes);
    void pressed(const QString& name) const;
    void answered(const std::vector<HotKeyWish>& wishes, const QStringList& refused);

    HotKeys& m_hotKeys;
    const Actions& m_actions;
    std::unique_ptr<QObject> m_context; ///< of the present set; earlier answers die with theirs
    std::set<CaptureAction> m_bound;
    std::set<CaptureAction> m_failed;
};

} // namespace brindlecam
