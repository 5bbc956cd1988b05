#pragma once

#include "desktop/support/Rival.h"

#include <QList>

namespace brindlecam::desktop {

/// The program's hot keys as long as nobody has changed them: Shift, Super and one of these.
constexpr Qt::Key kAreaKey = Qt::Key_9;
constexpr Qt::Key kFullScreenKey = Qt::Key_8;
constexpr Qt::KeyboardModifiers kHotKeyModifiers = Qt::ShiftModifier | Qt::MetaModifier;

/// The keys under a person's fingers, in the order in which they are pressed.
[[nodiscard]] inline QList<Qt::Key> hotKey(Qt::Key key)
{
    return {Qt::Key_Shift, Qt::Key_Super_L, key};
}

/// Whether somebody has both.
[[nodiscard]] inline bool areHotKeysTaken(Rival& rival)
{
    return rival.isHotKeyTaken(kAreaKey, kHotKeyModifiers) &&
           rival.isHotKeyTaken(kFullScreenKey, kHotKeyModifiers);
}

} // namespace brindlecam::desktop
