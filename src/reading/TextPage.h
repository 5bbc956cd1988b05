#pragma once

#include "reading/BackgroundMap.h"
#include "reading/StopRequest.h"
#include "reading/Word.h"

#include <QImage>
#include <QRect>
#include <QStringList>

#include <vector>

namespace brindlecam {

/// A picture made ready for the engine, and what is needed to turn the engine's words into lines.
/// Any thread.
class TextPage final {
public:
    /// Makes the picture, in its own pixels, dark on white, large enough and free of icons.
    /// Throws std::bad_alloc.
    explicit TextPage(const QImage& picture, StopRequest stop = {});

    /// What the engine reads: 8-bit grey with a white border. Null when there was no picture or
    /// nothing on it.
    [[nodiscard]] const QImage& grey() const { return m_grey; }

    /// The lines of the words that were read in grey(), in reading order. `words` come line by
    /// line, from left to right, their boxes in pixels of grey().
    [[nodiscard]] QStringList lines(std::vector<Word> words, StopRequest stop = {}) const;

private:
    [[nodiscard]] int backgroundAt(QPoint grey) const;

    QImage m_grey;
    double m_factor = 1; ///< pixels of grey() per pixel of the picture
    BackgroundMap m_backgrounds;
    std::vector<QRect> m_possibleIcons; ///< pixels of grey()
};

} // namespace brindlecam
