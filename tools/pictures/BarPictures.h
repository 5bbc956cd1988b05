#pragma once

namespace brindlecam {

class Prefs;

namespace pictures {

class Photographer;

/// Everything around a selection that can be pressed, in each of its states and places: bars,
/// palette, size popups, tooltips; and the messages over the selection.
void takeBarPictures(Photographer& photographer, Prefs& prefs);

} // namespace pictures

} // namespace brindlecam
