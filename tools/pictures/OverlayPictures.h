#pragma once

namespace brindlecam {

class Prefs;

namespace pictures {

class Photographer;

/// The session on a frozen screen: hint, hovered window, selections, loupe.
void takeOverlayPictures(Photographer& photographer, Prefs& prefs);

} // namespace pictures

} // namespace brindlecam
