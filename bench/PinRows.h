#pragma once

#include "MarkHands.h"

namespace brindlecam::bench {

class Figures;

/// What a large pin feels like: from a notch of the wheel to the pin in its new size. Native
/// pixels, on a stage of one pixel per point.
class PinRows final {
public:
    PinRows(Stage& stage, Figures& figures);

    void run();

private:
    /// A notch of the wheel and what it changes.
    struct Turn {
        desktop::Button wheel = desktop::Button::wheelUp;
        std::vector<Sample> changed;
    };

    [[nodiscard]] QRect area() const;
    void open();
    void close();
    /// Turns the wheel by a notch. Returns the moment just before that was sent.
    Clock::time_point turnWheel(desktop::Button wheel);
    [[nodiscard]] std::vector<Turn> rehearsed();

    Stage& m_stage;
    Figures& m_figures;
    MarkHands m_user;
};

} // namespace brindlecam::bench
