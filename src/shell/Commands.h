#pragma once

#include "preferences/CaptureAction.h"
#include "shell/InstanceMessages.h"
#include "shell/ProgramAction.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace brindlecam {

/// What the program was started for.
struct Command {
    enum class Kind {
        run,     ///< start, or hand over to the running copy; `action` says what for
        version, ///< print the version and end
        help,    ///< print how to use it and end
        ports,   ///< print which class would serve each port here and end
        wrong,   ///< say that `wrongArgument` makes no sense and end
    };

    Kind kind = Kind::run;
    std::optional<CaptureAction> action = std::nullopt; ///< none: just start, or reopen
    std::optional<int> delay = std::nullopt;            ///< seconds until then
    std::optional<ProgramAction> other = std::nullopt;  ///< instead of a capture
    bool liveTest = false;                              ///< failed captures stay silent
    QString wrongArgument = {};
    QString display = {}; ///< the one that Qt's option names; empty: the environment's
    QString backEnd = {}; ///< the same for what Qt calls its platform

    bool operator==(const Command&) const = default;
};

/// The command line. Needs no application object.
namespace Commands {

/// What the program ends with. Desktop scripts rely on them.
enum ExitCode : int {
    success = 0,
    unanswered = 1,   ///< a running copy does not answer
    noDisplay = 2,    ///< no graphical environment we can run in, or not with the ports asked for
    notAvailable = 3, ///< the program is about to end
    busy = 4,         ///< not carried out, because a capture runs
    otherVersion = 5, ///< the running copy speaks another version of the protocol
    wrongArguments = 64, ///< the usual number for it
};

/// Whether new versions can be looked for. Where they can't, there is no command for it.
enum class Updates { offered, absent };

/// Reads the arguments without the program's name. Qt's own options are left to Qt.
[[nodiscard]] Command parse(const QStringList& arguments);
/// The same with bytes as the system gave them.
[[nodiscard]] Command parseWords(const QByteArrayList& words);

/// Several lines, for "--help" and after a wrong argument.
[[nodiscard]] QString usage(Updates updates);
/// One line for a wrong argument.
[[nodiscard]] QString complaint(const QString& wrongArgument);

/// What a command is answered that asks for words alone: version, help, and wrong arguments.
/// Nothing for one that is to run. Ports are no running copy's business: who is asked for them here
/// does not understand.
[[nodiscard]] std::optional<InstanceReply> spokenReply(const Command& command, Updates updates);
[[nodiscard]] InstanceReply notAvailableReply();
[[nodiscard]] InstanceReply busyReply();
[[nodiscard]] InstanceReply otherVersionReply();
[[nodiscard]] InstanceReply unansweredReply();

} // namespace Commands

} // namespace brindlecam
