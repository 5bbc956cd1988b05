#pragma once

namespace brindlecam {

class AppDelegate;
class Prefs;

namespace pictures {

class Photographer;

/// Every alert, the About panel and the save panel.
void takeDialogPictures(Photographer& photographer, AppDelegate& delegate, Prefs& prefs);

} // namespace pictures

} // namespace brindlecam
