#pragma once

#include "MarkHands.h"
#include "Pastes.h"

namespace brindlecam::bench {

class Figures;

/// What reading text costs: from the press to the clipboard, and the memory that is left.
class TextRows final {
public:
    TextRows(Stage& stage, Figures& figures);

    /// A paragraph of 300 characters, with the engine loaded and without.
    void pressToClipboard();
    /// Private memory before the first reading and when the engine is given back after the last.
    void afterTwoMinutes();

private:
    [[nodiscard]] std::optional<double> read(std::chrono::seconds before);
    [[nodiscard]] double memoryAtRest();

    Stage& m_stage;
    Figures& m_figures;
    MarkHands m_user;
    Pastes m_pastes;
};

} // namespace brindlecam::bench
