#pragma once

#include <QString>

namespace brindlecam {

/// A line with what the engine always gets wrong in Spanish set right: "gú" for "gü" before e and
/// i, the degree sign for the ordinal in "n.º".
[[nodiscard]] QString fixedText(const QString& line);

} // namespace brindlecam
