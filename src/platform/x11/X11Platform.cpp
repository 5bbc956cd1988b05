#include "platform/x11/X11Platform.h"

#include "base/WorkPool.h"
#include "platform/x11/clipboard/X11Pasteboard.h"
#include "platform/x11/connection/ServerProbe.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/desktop/X11Displays.h"
#include "platform/x11/desktop/X11ForeignPresses.h"
#include "platform/x11/desktop/X11WindowList.h"
#include "platform/x11/desktop/XEmbedTrayHosts.h"
#include "platform/x11/grab/ServerPixels.h"
#include "platform/x11/grab/X11Grabber.h"
#include "platform/x11/keys/X11FrontApplication.h"
#include "platform/x11/keys/X11HotKeys.h"
#include "platform/x11/keys/X11InputGrabs.h"
#include "platform/x11/windows/CompositorWatch.h"
#include "platform/x11/windows/PanelWindows.h"
#include "platform/x11/windows/X11Compositing.h"
#include "platform/x11/windows/X11Panels.h"
#include "platform/x11/windows/X11Pins.h"

#include <functional>
#include <memory>
#include <utility>

namespace brindlecam::X11Platform {

namespace {

constexpr const char* kName = "x11";

/// What several ports share: it comes with the first of them and goes with the last, which is
/// before the application object does.
template <typename Shared>
class Common final {
public:
    using Make = std::function<std::shared_ptr<Shared>()>;

    explicit Common(Make make = std::make_shared<Shared>)
        : m_make(std::move(make))
    {
    }

    [[nodiscard]] std::shared_ptr<Shared> get()
    {
        std::shared_ptr<Shared> shared = m_shared.lock();
        if (!shared) {
            shared = m_make();
            m_shared = shared;
        }
        return shared;
    }

private:
    Make m_make;
    std::weak_ptr<Shared> m_shared;
};

/// Makes a port of what it shares with others.
template <typename Port, typename... Shared>
auto making(const std::shared_ptr<Common<Shared>>&... shared)
{
    return [shared...] { return std::make_unique<Port>(shared->get()...); };
}

std::unique_ptr<X11Pasteboard> makePasteboard()
{
    return std::make_unique<X11Pasteboard>(WorkPool::run);
}

/// Windows of ours are the server's.
bool hasOurWindows(const Session& session)
{
    return session.windowSystem == WindowSystem::x11;
}

/// The server draws the desktop, too. Inside of Wayland it shows black where others' windows are,
/// knows only some of them, and hears no key that goes to the rest.
bool isTheDesktop(const Session& session)
{
    return hasOurWindows(session) && !session.isWayland();
}

} // namespace

Session::XServer askServer()
{
    return x11::probeServer();
}

bool isOffered(const Session& session)
{
    return session.xServer == Session::XServer::itself && !session.isWayland();
}

// X11 asks for no permission to read the screen.
void offer(PortOffers& offers)
{
    const auto events = std::make_shared<Common<X11Events>>();
    const auto pixels = std::make_shared<Common<ServerPixels>>();
    const auto compositor = std::make_shared<Common<CompositorWatch>>();
    const auto windows = std::make_shared<Common<PanelWindows>>(
        [events] { return std::make_shared<PanelWindows>(events->get()); });
    offers.displays.makers.push_back({kName, "X11Displays", hasOurWindows, making<X11Displays>()});
    offers.grabber.makers.push_back(
        {kName, "X11Grabber", isTheDesktop, making<X11Grabber>(pixels)});
    offers.windowList.makers.push_back(
        {kName, "X11WindowList", isTheDesktop, making<X11WindowList>()});
    offers.hotKeys.makers.push_back(
        {kName, "X11HotKeys", isTheDesktop, making<X11HotKeys>(events)});
    offers.inputGrabs.makers.push_back(
        {kName, "X11InputGrabs", hasOurWindows, making<X11InputGrabs>()});
    offers.foreignPresses.makers.push_back(
        {kName, "X11ForeignPresses", isTheDesktop, making<X11ForeignPresses>(events)});
    offers.panels.makers.push_back(
        {kName, "X11Panels", hasOurWindows, making<X11Panels>(windows, pixels)});
    offers.pins.makers.push_back(
        {kName, "X11Pins", hasOurWindows, making<X11Pins>(windows, compositor)});
    offers.compositing.makers.push_back(
        {kName, "X11Compositing", hasOurWindows, making<X11Compositing>(compositor, pixels)});
    offers.pasteboard.makers.push_back({kName, "X11Pasteboard", hasOurWindows, makePasteboard});
    offers.frontApplication.makers.push_back(
        {kName, "X11FrontApplication", hasOurWindows, making<X11FrontApplication>(events)});
    offers.trayHosts.makers.push_back(
        {"xembed", "XEmbedTrayHosts", hasOurWindows, making<XEmbedTrayHosts>()});
}

} // namespace brindlecam::X11Platform
