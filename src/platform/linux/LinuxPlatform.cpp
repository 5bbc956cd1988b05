#include "platform/linux/LinuxPlatform.h"

#include "platform/linux/LinuxFileOpener.h"
#include "platform/linux/LinuxTrayHosts.h"
#include "platform/linux/SessionBus.h"
#include "platform/linux/StatusNotifierHosts.h"

#include <utility>

namespace brindlecam::LinuxPlatform {

void prepare()
{
    SessionBus::neverLaunch();
}

void add(Platform& platform)
{
    platform.fileOpener = std::make_unique<LinuxFileOpener>();
    std::vector<std::unique_ptr<TrayHosts>> kinds;
    kinds.push_back(std::make_unique<StatusNotifierHosts>());
    kinds.push_back(std::move(platform.trayHosts));
    platform.trayHosts = std::make_unique<LinuxTrayHosts>(std::move(kinds));
    platform.keyNaming = KeyNaming::words;
    platform.interfaceFont = QStringLiteral("Inter");
    platform.textCatalogue = QStringLiteral(":/i18n/brindlecam_linux.qm");
}

} // namespace brindlecam::LinuxPlatform
