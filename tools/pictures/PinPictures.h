#pragma once

namespace brindlecam::pictures {

class Photographer;

/// A pin: as it appears, under the pointer, at its smallest and at its largest.
void takePinPictures(Photographer& photographer);

} // namespace brindlecam::pictures
