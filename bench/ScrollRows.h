#pragma once

#include "MarkHands.h"
#include "Pastes.h"

#include <memory>

namespace brindlecam::bench {

class Figures;

/// What a long capture costs while it runs and when it ends. A stage of its own, a little wider
/// than the widest page.
class ScrollRows final {
public:
    ScrollRows(Stage& stage, Figures& figures);

    static constexpr QSize kStage{2000, 1080};

    /// The program's share of a core during a session: nobody scrolls, somebody does so calmly.
    void load();
    /// A page of 20,000 rows: the most memory it takes, and how long after Return it is offered.
    void tallPage();

private:
    struct Delivery {
        double offered = 0;  ///< milliseconds
        double memory = 0;   ///< MiB, the most beyond what there was before
        double pngBytes = 0; ///< as offered
    };

    /// Shows a page beneath this area and begins to capture it.
    void begin(const QImage& page, const QRect& area);
    void scrollTo(int row);
    /// Scrolls on by so many rows every so many milliseconds.
    void scrollOn(int times, int rows, unsigned long apart);
    /// Waits until nothing of the program is on the screen.
    void awaitEnd();
    [[nodiscard]] double shareOfCore(const std::function<void()>& meanwhile) const;
    [[nodiscard]] std::optional<Delivery> deliver(const QImage& page);

    Stage& m_stage;
    Figures& m_figures;
    MarkHands m_user;
    Pastes m_pastes;
    QImage m_page;
    QRect m_area;
    std::unique_ptr<desktop::ClientWindow> m_window;
    int m_row = 0;
};

} // namespace brindlecam::bench
