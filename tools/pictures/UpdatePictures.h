#pragma once

namespace brindlecam::pictures {

class Photographer;

/// What is told about new versions.
void takeUpdatePictures(Photographer& photographer);

} // namespace brindlecam::pictures
