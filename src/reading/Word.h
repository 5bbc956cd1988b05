#pragma once

#include <QRect>
#include <QString>

namespace brindlecam {

/// A word as the engine read it.
struct Word {
    QString text;
    double confidence = 0; ///< 0 to 100
    QRect box;             ///< pixels of the picture that was read
    int line = 0;          ///< the engine's count of lines, from the top
};

} // namespace brindlecam
