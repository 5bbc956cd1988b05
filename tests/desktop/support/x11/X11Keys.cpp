#include "desktop/support/x11/X11Keys.h"

#include <QChar>

#include <X11/keysym.h>

#include <algorithm>
#include <array>
#include <utility>

namespace brindlecam::desktop {

namespace {

/// Keys that type nothing, and those that type what another one does, too.
constexpr std::array<std::pair<Qt::Key, xcb_keysym_t>, 31> kNamed{{
    {Qt::Key_Escape, XK_Escape},
    {Qt::Key_Tab, XK_Tab},
    {Qt::Key_Backspace, XK_BackSpace},
    {Qt::Key_Return, XK_Return},
    {Qt::Key_Enter, XK_KP_Enter},
    {Qt::Key_Delete, XK_Delete},
    {Qt::Key_Home, XK_Home},
    {Qt::Key_End, XK_End},
    {Qt::Key_Left, XK_Left},
    {Qt::Key_Up, XK_Up},
    {Qt::Key_Right, XK_Right},
    {Qt::Key_Down, XK_Down},
    {Qt::Key_Shift, XK_Shift_L},
    {Qt::Key_Control, XK_Control_L},
    {Qt::Key_Alt, XK_Alt_L},
    {Qt::Key_Super_L, XK_Super_L},
    {Qt::Key_CapsLock, XK_Caps_Lock},
    {Qt::Key_NumLock, XK_Num_Lock},
    {Qt::Key_Menu, XK_Menu},
    {Qt::Key_Multi_key, XK_Multi_key},
    {Qt::Key_Dead_Acute, XK_dead_acute},
    {Qt::Key_F1, XK_F1},
    {Qt::Key_F2, XK_F2},
    {Qt::Key_F3, XK_F3},
    {Qt::Key_F4, XK_F4},
    {Qt::Key_F5, XK_F5},
    {Qt::Key_F6, XK_F6},
    {Qt::Key_F7, XK_F7},
    {Qt::Key_F8, XK_F8},
    {Qt::Key_F9, XK_F9},
    {Qt::Key_F10, XK_F10},
}};

/// The two that keyboards of tests have.
constexpr std::array<std::pair<char16_t, xcb_keysym_t>, 2> kCyrillic{{
    {u'с', XK_Cyrillic_es},
    {u'я', XK_Cyrillic_ya},
}};

constexpr std::array<std::pair<Qt::KeyboardModifier, std::uint16_t>, 4> kModifiers{{
    {Qt::ShiftModifier, XCB_MOD_MASK_SHIFT},
    {Qt::ControlModifier, XCB_MOD_MASK_CONTROL},
    {Qt::AltModifier, XCB_MOD_MASK_1},
    {Qt::MetaModifier, XCB_MOD_MASK_4},
}};

} // namespace

xcb_keysym_t keysymOf(Qt::Key key)
{
    const auto named = std::ranges::find(kNamed, key, &std::pair<Qt::Key, xcb_keysym_t>::first);
    if (named != kNamed.end())
        return named->second;
    const char16_t letter = QChar(static_cast<char16_t>(key)).toLower().unicode();
    const auto foreign =
        std::ranges::find(kCyrillic, letter, &std::pair<char16_t, xcb_keysym_t>::first);
    // Latin-1 keysyms have the numbers of their characters.
    return foreign != kCyrillic.end() ? foreign->second : xcb_keysym_t(letter);
}

Qt::Key keyOf(xcb_keysym_t keysym)
{
    const auto named = std::ranges::find(kNamed, keysym, &std::pair<Qt::Key, xcb_keysym_t>::second);
    if (named != kNamed.end())
        return named->first;
    const auto foreign =
        std::ranges::find(kCyrillic, keysym, &std::pair<char16_t, xcb_keysym_t>::second);
    const auto letter = foreign != kCyrillic.end() ? foreign->first : static_cast<char16_t>(keysym);
    return static_cast<Qt::Key>(QChar(letter).toUpper().unicode());
}

std::uint16_t maskOf(Qt::KeyboardModifiers modifiers)
{
    std::uint16_t mask = 0;
    for (const auto& [modifier, bit] : kModifiers)
        mask |= modifiers.testFlag(modifier) ? bit : std::uint16_t{0};
    return mask;
}

Qt::KeyboardModifiers modifiersOf(std::uint16_t mask)
{
    Qt::KeyboardModifiers modifiers;
    for (const auto& [modifier, bit] : kModifiers)
        modifiers.setFlag(modifier, (mask & bit) != 0);
    return modifiers;
}

} // namespace brindlecam::desktop
