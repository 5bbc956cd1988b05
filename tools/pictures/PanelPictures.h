#pragma once

namespace brindlecam::pictures {

class Photographer;

/// Toasts and the countdown.
void takePanelPictures(Photographer& photographer);

} // namespace brindlecam::pictures
