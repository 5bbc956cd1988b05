#pragma once

#include "reading/Word.h"

#include <QRect>
#include <QString>

#include <functional>
#include <vector>

namespace brindlecam {

/// A stretch of one line without a wide gap. Pixels of the picture that was read.
struct Fragment {
    QString text;
    QRect box;
    int background = 0; ///< what it stands on
};

/// Cuts the engine's lines at gaps that are wider than the line is high. `backgroundAt` says what
/// lies at a pixel. The words of a line come from left to right.
[[nodiscard]] std::vector<Fragment> fragments(const std::vector<Word>& words,
                                              const std::function<int(QPoint)>& backgroundAt);

} // namespace brindlecam
