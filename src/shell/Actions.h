#pragma once

#include "base/KeyCombo.h"
#include "preferences/CaptureAction.h"
#include "shell/ProgramAction.h"

#include <QString>

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace brindlecam {

class AppDelegate;
class Prefs;

/// Something the user can ask of the program as a whole. Each of its functions is there.
struct Action {
    QString title;                                ///< in a menu
    std::function<std::optional<KeyCombo>()> key; ///< as it is set now; a capture's is its hot key
    std::function<bool()> canRun;                 ///< its room is there, and it may begin
    std::function<void()> run;                    ///< now; nothing where it can't
    std::function<void()> runFromMenu;            ///< the same, once the menu has closed
};

/// The one list of what can be asked for: menus, hot keys, commands and other copies of the program
/// read it. Main thread.
struct Actions {
    /// By their ids, which settings, commands and the desktop file know.
    std::map<CaptureAction, Action> captures;
    std::vector<Action> delayed; ///< captures after a countdown
    /// Without the search for new versions where there is no place to ask.
    std::map<ProgramAction, Action> others;

    /// Null for one that is not offered.
    [[nodiscard]] const Action* find(ProgramAction id) const;
};

/// The list of a program whose delegate this is; both outlive it.
[[nodiscard]] Actions makeActions(AppDelegate& delegate, const Prefs& prefs);

} // namespace brindlecam
