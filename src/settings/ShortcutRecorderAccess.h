#pragma once

namespace brindlecam {

/// Tells assistive technology that a ShortcutRecorder is a button with a value, the shortcut. Main
/// thread.
namespace ShortcutRecorderAccess {

/// Makes Qt ask us about recorders, however often it is called.
void install();

} // namespace ShortcutRecorderAccess

} // namespace brindlecam
