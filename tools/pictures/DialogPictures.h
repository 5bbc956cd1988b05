#pragma once

namespace brindlecam {

class Prefs;

namespace pictures {

class Photographer;

/// Every alert, the About panel and the save panel.
void takeDialogPictures(Photographer& photographer, Prefs& prefs);

} // namespace pictures

} // namespace brindlecam
