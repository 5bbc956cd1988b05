#pragma once

#include "Stage.h"

namespace brindlecam::bench {

class Figures;
class Launch;

/// From the area key, or a command, to the frozen, dimmed screen with its hint, and from a
/// pointer's move to what it changes.
class OverlayRows final {
public:
    OverlayRows(Stage& stage, Figures& figures);

    void firstCapture();
    void warmCapture();
    /// When all memory has been given back: the time from the key, the page faults of both sides,
    /// and the time from a command.
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
    [[nodiscard]] std::optional<double> measure(Launch& command);
    [[nodiscard]] std::optional<double> measureSince(Clock::time_point start);

    Stage& m_stage;
    Figures& m_figures;
    std::vector<Sample> m_painted; ///< of the overlay: dimmed places and the hint
};

} // namespace brindlecam::bench
