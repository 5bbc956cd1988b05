#pragma once

namespace brindlecam::OpenMenus {

/// Closes whatever menus of ours are open, as if the user had thought better of it: they would keep
/// mouse and keyboard from a capture, and be in its picture. Says whether there were any. Main
/// thread.
bool close();

} // namespace brindlecam::OpenMenus
