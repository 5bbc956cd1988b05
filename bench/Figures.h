#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace brindlecam::bench {

/// One line of the table: what was measured, against what it is held.
struct Figure {
    QString what;
    QString unit = QStringLiteral("ms");
    std::vector<double> samples; ///< in `unit`; their median counts, or the least
    std::optional<double> limit; ///< the most what counts may be; none: told for information
    QString yardstick;           ///< what `yardstickSamples` measure
    std::vector<double> yardstickSamples;
    std::optional<double> ratioLimit; ///< the most median / yardstick may be
    bool leastCounts = false; ///< where a few long rounds meet whatever else the machine does
};

[[nodiscard]] double median(std::vector<double> values);

/// The table of a run, printed line by line as it grows.
class Figures final {
public:
    void begin(const QString& title);
    void add(const Figure& figure);
    /// A sentence below the table's last line.
    void note(const QString& words);

    /// Whether every figure with a limit keeps it.
    [[nodiscard]] bool allMet() const { return m_missed == 0; }
    void conclude();

private:
    int m_missed = 0;
    int m_met = 0;
};

} // namespace brindlecam::bench
