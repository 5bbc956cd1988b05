#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace brindlecam::x11 {

/// What is to be done about another program's grab of pointer or keyboard, look by look, at equal
/// distances. Pure.
///
/// A menu gets Escape once, and again only after that has closed something: a program that is slow
/// would act on the surplus once its menu is gone. Nothing else gets a key. Grabs that end with a
/// key or button that is held, such as that of another program's hot key, are waited for.
class GrabPatience final {
public:
    static constexpr std::chrono::milliseconds kInterval{25}; ///< from look to look
    static constexpr int kMostEscapes = 5;

    /// How things stand.
    struct Seen {
        bool taken = false; ///< another program has pointer or keyboard
        bool held = false;  ///< a key or a button is down
        /// Windows of open menus that Escape would reach; always in the same order.
        std::vector<std::uint32_t> menus{};
    };
    enum class Step {
        goOn,        ///< pointer and keyboard are free
        pressEscape, ///< and look again
        wait,        ///< and look again
        giveUp,
    };

    [[nodiscard]] Step next(const Seen& seen);

private:
    [[nodiscard]] bool deservesEscape(const Seen& seen) const;

    int m_looks = 0;
    int m_quietLooks = 0; ///< since nothing was held, nothing pressed and nothing closed
    int m_escapes = 0;
    std::vector<std::uint32_t> m_closing; ///< the menus that were open at the last Escape
};

} // namespace brindlecam::x11
