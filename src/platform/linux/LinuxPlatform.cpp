#include "platform/linux/LinuxPlatform.h"

#include "platform/linux/LinuxFileOpener.h"
#include "platform/linux/LinuxLoginItem.h"
#include "platform/linux/LinuxTrayHosts.h"
#include "platform/linux/SessionBus.h"
#include "platform/linux/StatusNotifierHosts.h"

#include <utility>

namespace brindlecam::LinuxPlatform {

void prepare()
{
    SessionBus::neverLaunch();
}

void look(Session& session)
{
    session.hasBusName = SessionBus::hasName;
}

void offer(PortOffers& offers)
{
    offers.fileOpener.makers.push_back({"linux", "LinuxFileOpener", &Session::hasDesktop,
                                        [] { return std::make_unique<LinuxFileOpener>(); }});
    offers.loginItem.makers.push_back({"linux", "LinuxLoginItem", &Session::hasDesktop,
                                       [] { return std::make_unique<LinuxLoginItem>(); }});
    offers.trayHosts.makers.push_back({"statusnotifier", "StatusNotifierHosts",
                                       &Session::hasDesktop,
                                       std::make_unique<StatusNotifierHosts>});
    offers.trayHosts.join = [](PortList<TrayHosts>::Several kinds) {
        return std::make_unique<LinuxTrayHosts>(std::move(kinds));
    };
}

void describe(Platform& platform)
{
    platform.keyNaming = KeyNaming::words;
    platform.interfaceFont = QStringLiteral("Inter");
    platform.textCatalogue = QStringLiteral(":/i18n/brindlecam_linux.qm");
}

} // namespace brindlecam::LinuxPlatform
