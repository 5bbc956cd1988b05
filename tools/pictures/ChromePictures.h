#pragma once

namespace brindlecam::pictures {

class Photographer;

/// What is seen of a long capture, in every place that it may have.
void takeChromePictures(Photographer& photographer);

} // namespace brindlecam::pictures
