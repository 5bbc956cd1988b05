#pragma once

namespace brindlecam {

class StatusMenu;

namespace pictures {

class Photographer;

/// The status menu as our own popup, with its submenu.
void takeMenuPictures(Photographer& photographer, StatusMenu& status);

} // namespace pictures

} // namespace brindlecam
