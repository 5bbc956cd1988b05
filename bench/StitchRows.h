#pragma once

#include <QSize>

namespace brindlecam::bench {

class Figures;

/// What a frame of a scrolled page costs the stitcher, in this process.
class StitchRows final {
public:
    StitchRows(QSize frame, Figures& figures);

    /// Signing a frame, with and without copying it, beside copying it alone.
    void signature();
    /// Frames of a page that is scrolled by 300 rows at a time.
    void add();

private:
    const QSize m_frame;
    Figures& m_figures;
};

} // namespace brindlecam::bench
