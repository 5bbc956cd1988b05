#pragma once

#include <cstdint>

namespace brindlecam {

/// What a key means in a shortcut that names a Latin letter: the key itself (a Qt::Key), unless its
/// own letter belongs to another script. Then it is the letter which the US keyboard has in that
/// place, as maps without Latin letters could not name one otherwise. `scanCode` is XKB's code of
/// the key.
[[nodiscard]] int latinLetter(int key, std::uint32_t scanCode);

} // namespace brindlecam
