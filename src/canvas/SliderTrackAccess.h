#pragma once

namespace brindlecam {

class SliderTrack;

/// Tells assistive technology that a SliderTrack is a slider, with value, range and step. Main
/// thread.
namespace SliderTrackAccess {

/// Makes Qt ask us about slider tracks, however often it is called.
void install();

/// The value has changed.
void announce(SliderTrack& track);

} // namespace SliderTrackAccess

} // namespace brindlecam
