#include "platform/factory/WindowSystems.h"

#include "base/Text.h"

#include <algorithm>
#include <array>

namespace brindlecam {

namespace {

/// What is said where no window system is offered, and when.
struct Refusal {
    bool (*applies)(const Session&);
    const char* line;
};

constexpr const char* kNoDisplay = "Brindlecam necesita un entorno gráfico: no hay DISPLAY.";
constexpr const char* kNeedsX11 = "Brindlecam todavía necesita X11.";

bool namesNothing(const Session& session)
{
    return !session.namesX11 && !session.namesWayland;
}

bool isWayland(const Session& session)
{
    return session.isWayland();
}

bool isUnanswered(const Session& session)
{
    return session.xServer == Session::XServer::silent;
}

bool always(const Session&)
{
    return true;
}

/// The first that applies is said.
constexpr std::array kRefusals{
    Refusal{namesNothing, kNoDisplay},
    Refusal{isWayland, kNeedsX11},
    Refusal{isUnanswered, kNoDisplay},
    Refusal{always, kNeedsX11},
};

} // namespace

Result<BuiltSystem> chooseWindowSystem(const std::vector<BuiltSystem>& built,
                                       const Session& session)
{
    const auto chosen = std::ranges::find_if(
        built, [&](const BuiltSystem& system) { return system.offered(session); });
    if (chosen != built.end())
        return *chosen;
    const auto* const refusal = std::ranges::find_if(
        kRefusals, [&](const Refusal& candidate) { return candidate.applies(session); });
    return Error{text(refusal->line)};
}

} // namespace brindlecam
