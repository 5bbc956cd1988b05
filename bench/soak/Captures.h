#pragma once

#include "Picture.h"
#include "World.h"

namespace brindlecam::soak {

/// A capture from trigger to end, as a person takes it, with what must come of it written into the
/// books.
namespace Captures {

enum class Trigger { key, command, tray };

/// Opens a session over what is on the screen now.
void open(World& world, Trigger trigger);
/// The same over what is known to be below.
void begin(World& world, const Picture& frozen, Trigger trigger);
/// Drags an area out that leaves the bars room on the first monitor; or any area, anywhere.
void dragRoomy(World& world);
void dragAnywhere(World& world);
/// Drags exactly this area out.
void drag(World& world, const QRect& area);
/// Exactly this area is selected now, in whatever way: copied, if the program does so by itself.
void areaIs(World& world, const QRect& area);
/// Whether the bars of the selected area stand where they can be pressed.
[[nodiscard]] bool barsHaveRoom(const World& world);

/// What the selected area holds, with marks as they are seen.
[[nodiscard]] Picture selected(World& world);
/// The picture has changed: with marks, what is seen must be what is copied.
void pictureChanged(World& world);

/// Ends the session with its picture taken, by Return or what else does so.
void take(World& world, const QList<Qt::Key>& keys = {Qt::Key_Return});
/// The session has ended with this picture taken.
void booksTaken(World& world, const Picture& picture);
/// Ends the session by Escape.
void escape(World& world);
/// The session is about to end without a file: what was copied live belongs into the history.
void keepLiveCopy(World& world);
/// Ends the session in a pin at the area.
void pin(World& world);
/// Ends the session; the panel asks where to save.
void openPanel(World& world);
/// Answers the panel with a name.
void saveUnderAName(World& world);
/// Closes the panel without an answer.
void closePanel(World& world);

void fullScreen(World& world, Trigger trigger);
/// Takes this monitor, on which the pointer is, over what is known to be below.
void takeScreen(World& world, const Picture& frozen, const QRect& monitor, Trigger trigger);

/// Goes wherever that is from wherever somebody is: captures are cancelled, or begun.
void reach(World& world, Situation wanted);

/// Goes where the bars stand and can be pressed.
void reachBars(World& world);

} // namespace Captures

} // namespace brindlecam::soak
