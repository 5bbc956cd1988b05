#pragma once

namespace brindlecam::pictures {

class Photographer;

/// The tray's icon and the window's at the sizes that panels use, on light and dark ground.
void takeIconPictures(Photographer& photographer);

} // namespace brindlecam::pictures
