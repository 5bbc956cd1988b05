#pragma once

#include <QString>

#include <array>
#include <optional>

namespace brindlecam {

/// What can be asked of the program besides captures.
enum class ProgramAction { openFolder, settings, update, about, quit };

inline constexpr std::array kAllProgramActions{ProgramAction::openFolder, ProgramAction::settings,
                                               ProgramAction::update, ProgramAction::about,
                                               ProgramAction::quit};

/// "folder", "settings", "update", "about", "quit": in commands.
[[nodiscard]] QString rawValue(ProgramAction action);
[[nodiscard]] std::optional<ProgramAction> programAction(const QString& rawValue);

} // namespace brindlecam
