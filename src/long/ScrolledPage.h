#pragma once

#include "long/Stitcher.h"

#include <QImage>

#include <memory>
#include <optional>

namespace brindlecam {

/// The page that grows out of the frames of a scroll capture. On one thread at a time: the one that
/// brings frames, and once that has ended whoever wants the picture.
class ScrolledPage final {
public:
    /// What the user is told after a frame.
    enum class State {
        waiting,  ///< nothing has been scrolled yet
        growing,  ///< by what was scrolled
        tooFast,  ///< no frame has matched for a while
        complete, ///< nothing more fits
        failed,   ///< there is no memory, not even for the first frame
    };

    /// A picture of 32 bits, as large as the one before.
    State add(const QImage& frame);

    /// In pixels; 0 as long as there is no frame.
    [[nodiscard]] int height() const { return m_stitcher ? m_stitcher->pictureRows() : 0; }

    /// What was stitched, in the stitcher's own memory; none before the first frame.
    [[nodiscard]] std::optional<QImage> picture() const;

private:
    std::unique_ptr<Stitcher> m_stitcher; ///< null before the first frame
    int m_lostInARow = 0;
};

} // namespace brindlecam
