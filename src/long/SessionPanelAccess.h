#pragma once

namespace brindlecam {

/// Tells assistive technology that a SessionPanel is a small dialog: Qt takes it for a space that
/// only holds others. Main thread.
namespace SessionPanelAccess {

/// Makes Qt ask us about such panels, however often it is called.
void install();

} // namespace SessionPanelAccess

} // namespace brindlecam
