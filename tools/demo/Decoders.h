#pragma once

#include <QString>

#include <optional>

namespace brindlecam::demo {

/// Whether somebody else's checker finds nothing wrong with a PNG.
[[nodiscard]] bool isSoundPng(const QString& path);
/// Width and height of a picture as somebody else's decoder reads them, as in "1280 × 800"; none
/// when it can't be read.
[[nodiscard]] std::optional<QString> sizeOf(const QString& path);

} // namespace brindlecam::demo
