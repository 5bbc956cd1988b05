#pragma once

namespace brindlecam {

class PinnedCaptures;

namespace pictures {

class Photographer;

/// A pin: as it appears, under the pointer, at its smallest and at its largest.
void takePinPictures(Photographer& photographer, PinnedCaptures& pins);

} // namespace pictures

} // namespace brindlecam
