#pragma once

#include "reading/Word.h"

#include <vector>

namespace brindlecam {

/// Text whose characters are all equally wide, as in terminals and code. Any thread.
namespace FixedPitch {

/// The width of a character cell, in pixels, or 0 when the text is not of fixed pitch.
[[nodiscard]] double cell(const std::vector<Word>& words);

/// Joins neighbours that are nearer to each other than a blank would be: the engine takes the wide
/// gaps beside narrow characters for blanks. `words` stand line by line, from left to right.
void join(std::vector<Word>& words);

} // namespace FixedPitch

} // namespace brindlecam
