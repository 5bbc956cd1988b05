#pragma once

namespace brindlecam::pictures {

class Photographer;

/// The settings window in a light and a dark theme, with what it warns of and asks.
void takeSettingsPictures(Photographer& photographer);

} // namespace brindlecam::pictures
