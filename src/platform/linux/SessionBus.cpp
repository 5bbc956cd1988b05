#include "platform/linux/SessionBus.h"

#include <sys/stat.h>
#include <unistd.h>

namespace brindlecam::SessionBus {

namespace {

constexpr const char* kVariable = "DBUS_SESSION_BUS_ADDRESS";
// No transport is called so: whoever connects to it fails at once.
constexpr const char* kNowhere = "disabled:";

/// The libraries trust a socket of the user's own only.
bool hasSocketInRuntimeFolder()
{
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    struct stat found {};
    return !folder.isEmpty() && stat((folder + "/bus").constData(), &found) == 0 &&
           S_ISSOCK(found.st_mode) && found.st_uid == getuid();
}

} // namespace

void neverLaunch()
{
    // An empty address counts as none.
    if (qgetenv(kVariable).isEmpty() && !hasSocketInRuntimeFolder())
        qputenv(kVariable, kNowhere);
}

QProcessEnvironment environmentOfOthers()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString variable = QString::fromLatin1(kVariable);
    if (environment.value(variable) == QLatin1String(kNowhere))
        environment.remove(variable);
    return environment;
}

} // namespace brindlecam::SessionBus
