#include "platform/factory/SessionSearch.h"

#include <QtGlobal>

namespace brindlecam {

namespace {

std::optional<WindowSystem> toldToQt()
{
    const QByteArray chosen = qgetenv("QT_QPA_PLATFORM");
    if (chosen.isEmpty())
        return std::nullopt;
    if (chosen.startsWith("xcb"))
        return WindowSystem::x11;
    return chosen.startsWith("wayland") ? WindowSystem::wayland : WindowSystem::none;
}

} // namespace

Session sessionOfEnvironment()
{
    return {
        .namesX11 = !qEnvironmentVariableIsEmpty("DISPLAY"),
        .namesWayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"),
        .isCalledWayland = qgetenv("XDG_SESSION_TYPE") == "wayland",
        .told = toldToQt(),
    };
}

bool isWorthAskingXServer(const Session& session)
{
    return session.namesX11 && !session.isWayland() && session.told != WindowSystem::none;
}

} // namespace brindlecam
