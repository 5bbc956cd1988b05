#pragma once

namespace brindlecam::x11 {

/// What tells an open menu from other windows that lie directly on the root and can be seen. Pure.
struct MenuLook {
    enum class Type {
        none,   ///< it does not say
        menu,   ///< of any kind, combo boxes included
        normal, ///< an ordinary window, and nothing else besides
        other,
    };
    enum class Likeness {
        none,
        likely, ///< only together with grabs of pointer and keyboard
        certain,
    };

    Type type = Type::none;        ///< what it says of itself
    bool overrideRedirect = false; ///< no window manager may touch it
    bool managed = false;          ///< a window manager looks after it
    bool transient = false;        ///< belongs to another window
    bool fillsScreen = false;      ///< at least as large as a screen

    [[nodiscard]] Likeness likeness() const;
};

} // namespace brindlecam::x11
