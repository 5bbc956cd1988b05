#pragma once

#include "Stage.h"

namespace brindlecam::bench {

class Figures;
class Rest;

/// What the settings window feels like, beside a bare window of its size; and what is left of it,
/// of the drawer and of a search for new versions a minute later.
class SettingsRows final {
public:
    /// A stage of its own, whose page is lowered: the window lies among others.
    SettingsRows(Stage& stage, Figures& figures);

    void run();

private:
    void rehearse();
    [[nodiscard]] std::optional<double> open();
    void close();
    [[nodiscard]] double bareWindow();
    void firstAndAgain();
    void leftBehind();

    Stage& m_stage;
    Figures& m_figures;
    std::vector<Sample> m_window; ///< what it looks like
    QRect m_pixels;               ///< where it is
};

} // namespace brindlecam::bench
