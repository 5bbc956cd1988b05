#pragma once

#include "Stage.h"

namespace brindlecam::bench {

class Figures;

/// From the area key to the frozen, dimmed screen with its hint, and from a pointer's move to what
/// it changes.
class OverlayRows final {
public:
    OverlayRows(Stage& stage, Figures& figures);

    void firstCapture();
    void warmCapture();
    /// When all memory has been given back: the time, and the page faults of both sides.
    void captureAfterRest();
    void pointerMoves();

private:
    struct Limits {
        double warm;
        double first;
        double rested;
        double move;
    };

    [[nodiscard]] bool isLarge() const;
    [[nodiscard]] Limits limits() const;
    void rehearse();
    /// Milliseconds from the key to the painted overlay, which is ended again.
    [[nodiscard]] std::optional<double> measure();

    Stage& m_stage;
    Figures& m_figures;
    std::vector<Sample> m_painted; ///< of the overlay: dimmed places and the hint
};

} // namespace brindlecam::bench
