#pragma once

#include "platform/Platform.h"
#include "platform/Session.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace brindlecam {

/// A class that may serve a port.
template <typename Port>
struct Maker {
    const char* name;   ///< what forces it, by BRINDLECAM_PORT_…; one word, mostly its system's
    const char* serves; ///< the class
    std::function<bool(const Session&)> offered;
    std::function<std::unique_ptr<Port>()> make; ///< the application object exists by then
};

/// Who may serve one port.
template <typename Port>
struct PortList {
    using Several = std::vector<std::unique_ptr<Port>>;

    const char* name;                        ///< as in Platform
    std::unique_ptr<Port> Platform::*member; ///< where it goes
    Maker<Port> null;                        ///< comes after all makers, and is always offered
    /// The first that is offered serves the port.
    std::vector<Maker<Port>> makers{};
    /// Set where all that are offered serve it side by side: makes them one.
    std::function<std::unique_ptr<Port>(Several)> join{};
};

/// Who may serve each port. A room of a system adds its classes behind those of the rooms that were
/// asked before it.
struct PortOffers {
    PortList<Displays> displays;
    PortList<Grabber> grabber;
    PortList<WindowList> windowList;
    PortList<CaptureAccess> captureAccess;
    PortList<HotKeys> hotKeys;
    PortList<InputGrabs> inputGrabs;
    PortList<ForeignPresses> foreignPresses;
    PortList<Panels> panels;
    PortList<Pins> pins;
    PortList<Compositing> compositing;
    PortList<Pasteboard> pasteboard;
    PortList<FrontApplication> frontApplication;
    PortList<FileOpener> fileOpener;
    PortList<LoginItem> loginItem;
    PortList<TextRecognizer> textRecognizer;
    PortList<TrayHosts> trayHosts;
    PortList<QuitSignals> quitSignals;

    /// Calls `visit` with each list. The ports are made in this order.
    template <typename Visit>
    void forEach(Visit visit)
    {
        visit(displays);
        visit(grabber);
        visit(windowList);
        visit(captureAccess);
        visit(hotKeys);
        visit(inputGrabs);
        visit(foreignPresses);
        visit(panels);
        visit(pins);
        visit(compositing);
        visit(pasteboard);
        visit(frontApplication);
        visit(fileOpener);
        visit(loginItem);
        visit(textRecognizer);
        visit(trayHosts);
        visit(quitSignals);
    }
};

} // namespace brindlecam
