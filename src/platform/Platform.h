#pragma once

#include "base/KeyCombo.h"
#include "base/Result.h"
#include "platform/CaptureAccess.h"
#include "platform/Compositing.h"
#include "platform/Displays.h"
#include "platform/FileOpener.h"
#include "platform/ForeignPresses.h"
#include "platform/FrontApplication.h"
#include "platform/Grabber.h"
#include "platform/HotKeys.h"
#include "platform/InputGrabs.h"
#include "platform/LoginItem.h"
#include "platform/Panels.h"
#include "platform/Pasteboard.h"
#include "platform/Pins.h"
#include "platform/QuitSignals.h"
#include "platform/TextRecognizer.h"
#include "platform/TrayHosts.h"
#include "platform/WindowList.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace brindlecam {

/// One of each port, chosen once at start. A port that this system lacks is the null class, never a
/// null pointer.
struct Platform {
    std::unique_ptr<Displays> displays;
    std::unique_ptr<Grabber> grabber;
    std::unique_ptr<WindowList> windowList;
    std::unique_ptr<CaptureAccess> captureAccess;
    std::unique_ptr<HotKeys> hotKeys;
    std::unique_ptr<InputGrabs> inputGrabs;
    std::unique_ptr<ForeignPresses> foreignPresses;
    std::unique_ptr<Panels> panels;
    std::unique_ptr<Pins> pins;
    std::unique_ptr<Compositing> compositing;
    std::unique_ptr<Pasteboard> pasteboard;
    std::unique_ptr<FrontApplication> frontApplication;
    std::unique_ptr<FileOpener> fileOpener;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<TextRecognizer> textRecognizer;
    std::unique_ptr<TrayHosts> trayHosts;
    std::unique_ptr<QuitSignals> quitSignals;

    KeyNaming keyNaming = KeyNaming::words; ///< how this system writes shortcuts
    QString interfaceFont;                  ///< family to ask for; empty: the system's own
    QString textCatalogue; ///< resource with the texts that read differently here; empty: none
};

/// A port, and the class that serves it; several that do so together are joined by plus signs.
struct ServedPort {
    QString name; ///< as in Platform
    QString serves;
};

/// The ports for the session that the program was started in, chosen one by one.
struct ChosenPorts {
    std::vector<ServedPort> served; ///< all of them
    /// Makes one of each, once. The application object must exist.
    std::function<Platform()> make;
};

/// Looks at the session and chooses. The error, in Spanish, says why this program can't run here:
/// no display, a display system that we do not speak yet, or a port that the environment wants from
/// somebody who is not there. Also settles which of Qt's own back ends is used. Call it before the
/// application object is made.
[[nodiscard]] Result<ChosenPorts> choosePorts();

} // namespace brindlecam
