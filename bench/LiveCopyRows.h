#pragma once

#include "MarkHands.h"
#include "Pastes.h"

namespace brindlecam::bench {

class Figures;

/// From the end of a mark to the picture that other programs can paste while the session goes on,
/// and what that costs.
class LiveCopyRows final {
public:
    LiveCopyRows(Stage& stage, Figures& figures);

    /// On a canvas with a few marks, then on one with 200. Each in a session of its own.
    void endOfMark();
    /// Thirty changes within a second.
    void manyChanges();

private:
    struct Costs {
        std::vector<double> offered;
        std::vector<double> mainThread;
    };

    [[nodiscard]] bool isLarge() const { return m_stage.pixels().width() >= 3840; }
    [[nodiscard]] bool isPhoto() const { return m_stage.shownPage() == Page::photo; }
    /// Ends so many marks, one after the other.
    [[nodiscard]] Costs endMarks(int rounds);
    void report(const QString& when, const Costs& costs);

    Stage& m_stage;
    Figures& m_figures;
    MarkHands m_user;
    Pastes m_pastes;
};

} // namespace brindlecam::bench
