#pragma once

#include "MarkHands.h"

namespace brindlecam::bench {

class Figures;

/// What a session full of marks leaves behind in the program's memory.
class MarkRestRows final {
public:
    MarkRestRows(Stage& stage, Figures& figures);

    void run();

private:
    /// Draws so many marks, takes so many steps back and forth, and leaves.
    void session(int marks, int steps);
    /// MiB of private memory once the program is at rest.
    [[nodiscard]] double atRest();

    Stage& m_stage;
    Figures& m_figures;
    MarkHands m_user;
};

} // namespace brindlecam::bench
