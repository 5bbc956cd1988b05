#pragma once

#include <QImage>
#include <QSize>

namespace brindlecam::test {

/// The size of the desktop that the tests of ports run on, in native pixels.
inline constexpr QSize kDesktop(1600, 900);

/// A picture of that size on which every shift shows: no two neighbours alike, no row like the one
/// above; only colours that depth 16 has, too.
[[nodiscard]] QImage pattern();

} // namespace brindlecam::test
