#include "shell/ProgramAction.h"

namespace brindlecam {

QString rawValue(ProgramAction action)
{
    switch (action) {
    case ProgramAction::openFolder:
        return QStringLiteral("folder");
    case ProgramAction::settings:
        return QStringLiteral("settings");
    case ProgramAction::update:
        return QStringLiteral("update");
    case ProgramAction::about:
        return QStringLiteral("about");
    case ProgramAction::quit:
        return QStringLiteral("quit");
    }
    Q_UNREACHABLE();
}

std::optional<ProgramAction> programAction(const QString& word)
{
    for (const ProgramAction action : kAllProgramActions) {
        if (rawValue(action) == word)
            return action;
    }
    return std::nullopt;
}

} // namespace brindlecam
