#pragma once

namespace brindlecam::pictures {

class Photographer;

/// The drawer with none, one, three and all entries, its tiles under pointer and keys, what it
/// asks, and captures shown large.
void takeDrawerPictures(Photographer& photographer);

} // namespace brindlecam::pictures
