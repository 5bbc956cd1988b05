#pragma once

#include "reading/Word.h"

#include <QImage>

#include <vector>

namespace brindlecam {

/// Words that the engine made of icons or of nothing at all. Any thread.
namespace DoubtfulWords {

/// Takes out what stands first in a line and was read in one of these places, unless it is surely
/// text. Pixels.
void dropIcons(std::vector<Word>& words, const std::vector<QRect>& places);

/// Takes out single characters and symbols where the 8-bit grey picture has no ink. In one block
/// the engine puts dashes into the gaps between columns.
void dropInkless(std::vector<Word>& words, const QImage& grey);

} // namespace DoubtfulWords

} // namespace brindlecam
