#pragma once

class QDialog;

namespace brindlecam::pictures {

class Photographer;

/// The dialog of ours that is on the screen, the one that was opened last where there are several;
/// or null. Main thread.
[[nodiscard]] QDialog* openDialog();

/// Waits for one, and takes a picture of it; then it is gone.
void takeOpenDialog(Photographer& photographer, const char* name);

} // namespace brindlecam::pictures
