#include "platform/Platform.h"

#include "platform/factory/PortChoice.h"
#include "platform/factory/SessionSearch.h"
#include "platform/factory/WindowSystems.h"
#include "platform/null/NullPlatform.h"

#ifdef BRINDLECAM_HAS_UNIX
#include "platform/unix/UnixPlatform.h"
#endif
#ifdef BRINDLECAM_HAS_LINUX
#include "platform/linux/LinuxPlatform.h"
#endif
#ifdef BRINDLECAM_HAS_X11
#include "platform/x11/X11Platform.h"
#endif

#include <QGuiApplication>

#include <utility>

namespace brindlecam {

namespace {

constexpr const char* kQtPlatform = "QT_QPA_PLATFORM";

/// In order of preference.
std::vector<BuiltSystem> builtSystems()
{
    std::vector<BuiltSystem> built{{WindowSystem::none, nullptr, [](const Session& session) {
                                        return session.told == WindowSystem::none;
                                    }}};
#ifdef BRINDLECAM_HAS_X11
    built.push_back({WindowSystem::x11, X11Platform::kQtName, X11Platform::isOffered});
#endif
    return built;
}

void prepareRooms()
{
#ifdef BRINDLECAM_HAS_UNIX
    UnixPlatform::prepare();
#endif
#ifdef BRINDLECAM_HAS_LINUX
    LinuxPlatform::prepare();
#endif
}

Session findSession()
{
    Session session = sessionOfEnvironment();
#ifdef BRINDLECAM_HAS_X11
    if (isWorthAskingXServer(session))
        session.xServer = X11Platform::askServer();
#endif
#ifdef BRINDLECAM_HAS_LINUX
    LinuxPlatform::look(session);
#endif
    return session;
}

/// Each room's classes come behind those of the rooms before it.
PortOffers builtOffers()
{
    PortOffers offers = nullOffers();
#ifdef BRINDLECAM_HAS_X11
    X11Platform::offer(offers);
#endif
#ifdef BRINDLECAM_HAS_LINUX
    LinuxPlatform::offer(offers);
#endif
#ifdef BRINDLECAM_HAS_UNIX
    UnixPlatform::offer(offers);
#endif
    return offers;
}

/// Where Qt was told a list it may have taken something else from that.
bool isSpoken(const BuiltSystem& system)
{
    return !system.qtName || QGuiApplication::platformName() == QLatin1String(system.qtName);
}

void describe([[maybe_unused]] Platform& platform, [[maybe_unused]] const Session& session)
{
#ifdef BRINDLECAM_HAS_LINUX
    if (session.hasDesktop())
        LinuxPlatform::describe(platform);
#endif
}

} // namespace

Result<ChosenPorts> choosePorts()
{
    prepareRooms();
    Session session = findSession();
    const auto system = chooseWindowSystem(builtSystems(), session);
    if (!system)
        return system.error();
    session.windowSystem = system.value().system;
    auto ports = choosePorts(builtOffers(), session, forcedByEnvironment());
    if (!ports)
        return ports;
    if (system.value().qtName && !qEnvironmentVariableIsSet(kQtPlatform))
        qputenv(kQtPlatform, system.value().qtName);
    const auto make = [make = ports.value().make, system = system.value(), session] {
        if (!isSpoken(system))
            return makeNullPlatform();
        Platform platform = make();
        describe(platform, session);
        return platform;
    };
    return ChosenPorts{ports.value().served, make};
}

} // namespace brindlecam
