#pragma once

#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "shell/Actions.h"

#include <QStringList>
#include <QTemporaryDir>

namespace brindlecam::test {

/// A list of actions with the shortcuts of a fresh installation, which note that they were run.
struct NotedActions {
    QTemporaryDir folder;
    Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
    Prefs prefs{defaults};
    QStringList cannotRun; ///< by what they note
    QStringList run;       ///< in order
    QStringList runFromMenu;
    Actions list;

    NotedActions()
    {
        for (const CaptureAction id : kAllCaptureActions) {
            list.captures.emplace(id, noted(title(id), rawValue(id)));
            list.captures.at(id).key = [this, id] { return prefs.combo(id); };
        }
        for (const char* each : {"area in 3", "full screen in 5"})
            list.delayed.push_back(noted(QString::fromLatin1(each), QString::fromLatin1(each)));
        for (const ProgramAction id : kAllProgramActions) {
            const QString word = rawValue(id);
            list.others.emplace(id, noted(word.left(1).toUpper() + word.mid(1), word));
        }
    }

private:
    Action noted(const QString& shown, const QString& what)
    {
        return {.title = shown,
                .key = [] { return std::nullopt; },
                .canRun = [this, what] { return !cannotRun.contains(what); },
                .run = [this, what] { run << what; },
                .runFromMenu = [this, what] { runFromMenu << what; }};
    }
};

} // namespace brindlecam::test
