#include "platform/Platform.h"

#include "base/Text.h"
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

namespace brindlecam {

namespace {

/// Whether Qt was told to use a back end without a desktop (offscreen, as tests do).
bool wantsNoDesktop()
{
    const QByteArray chosen = qgetenv("QT_QPA_PLATFORM");
    return !chosen.isEmpty() && !chosen.startsWith("xcb") && !chosen.startsWith("wayland");
}

} // namespace

std::optional<Error> preparePlatform()
{
#ifdef BRINDLECAM_HAS_UNIX
    UnixPlatform::prepare();
#endif
#ifdef BRINDLECAM_HAS_LINUX
    LinuxPlatform::prepare();
#endif
    if (wantsNoDesktop())
        return std::nullopt;
#ifdef BRINDLECAM_HAS_X11
    return X11Platform::prepare();
#else
    return Error{text("Brindlecam todavía necesita X11.")};
#endif
}

Platform makePlatform()
{
    Platform platform = makeNullPlatform();
#ifdef BRINDLECAM_HAS_X11
    if (!X11Platform::isSpoken())
        return platform;
    UnixPlatform::add(platform);
    X11Platform::add(platform);
    LinuxPlatform::add(platform);
#endif
    return platform;
}

} // namespace brindlecam
