#pragma once

namespace brindlecam {

class Prefs;

namespace pictures {

class Photographer;

/// What the tools draw: every mark in its least, usual and largest size, text while it is typed and
/// afterwards, step badges, pixelation, and marks that are selected or cut off.
void takeMarkPictures(Photographer& photographer, Prefs& prefs);

} // namespace pictures

} // namespace brindlecam
