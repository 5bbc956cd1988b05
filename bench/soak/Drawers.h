#pragma once

#include "Captures.h"

namespace brindlecam::soak {

/// The drawer from its opening to its end, as a person uses it.
namespace Drawers {

/// What opens it, and closes one that is open; nothing is awaited.
void pull(World& world, Captures::Trigger trigger);
/// Opens it on any monitor, or on this one, and waits until it stands with the keyboard.
void open(World& world, Captures::Trigger trigger);
void openOn(World& world, const QRect& monitor, Captures::Trigger trigger);
/// It is in its place, with all that it must show.
void awaitStands(World& world);
/// It closes, for whatever reason.
void awaitGone(World& world);
void closeByEscape(World& world);

/// What differs on the screen from what the drawer must show; empty when nothing does.
[[nodiscard]] QString strangeness(World& world);

/// Gives the keys to any tile.
void focusAny(World& world);
/// Chooses from the menu of any tile that can be seen, until something comes of it. Which one it
/// was.
int chooseInMenu(World& world, const char* entry, const std::function<bool(int tile)>& happens);

} // namespace Drawers

} // namespace brindlecam::soak
