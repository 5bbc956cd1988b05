#pragma once

#include <QProcessEnvironment>
#include <QString>

namespace brindlecam {

/// The session's message bus, which may not be there. Libraries that look for one launch a bus of
/// their own where the environment names none and there is a display: a daemon that nobody asked
/// for, and that outlives us.
namespace SessionBus {

/// Keeps every library in this process from launching one. Before the application object is made:
/// the tray, the accessibility bridge and platform themes ask for the bus by themselves.
void neverLaunch();

/// What programs that we start get: the environment as we found it. Theirs is not ours to decide.
[[nodiscard]] QProcessEnvironment environmentOfOthers();

/// Whether somebody has this name on the bus, or would be started for it; false where there is no
/// bus. Waits for the bus, on a connection of its own: the application object may not be there yet.
[[nodiscard]] bool hasName(const QString& name);

} // namespace SessionBus

} // namespace brindlecam
