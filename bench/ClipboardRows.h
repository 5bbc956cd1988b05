#pragma once

#include "Pastes.h"
#include "Stage.h"

#include <vector>

namespace brindlecam::bench {

class Figures;

/// From the key that ends a capture to the picture that other programs can use.
class ClipboardRows final {
public:
    ClipboardRows(Stage& stage, Figures& figures);

    void areaWithoutAutomaticCopy();
    void areaWithAutomaticCopy();
    void fullScreen();

private:
    struct Times {
        std::vector<double> offered;
        std::vector<double> read;
    };

    /// Areas of 800 × 600 pixels, each ended by Return.
    [[nodiscard]] Times areas(bool automaticCopy);
    /// Milliseconds from the key to the file's last byte.
    [[nodiscard]] std::optional<double> untilFile();
    [[nodiscard]] std::optional<double> untilRead();
    [[nodiscard]] bool isLarge() const;
    [[nodiscard]] bool isPhoto() const { return m_stage.shownPage() == Page::photo; }

    Stage& m_stage;
    Figures& m_figures;
    Pastes m_pastes;
    QString m_lastFile;
};

} // namespace brindlecam::bench
