#pragma once

namespace brindlecam {

class Prefs;

namespace pictures {

class Photographer;

/// The status menu as our own popup, with its submenu.
void takeMenuPictures(Photographer& photographer, const Prefs& prefs);

} // namespace pictures

} // namespace brindlecam
