#pragma once

#include "Footprint.h"

#include <functional>
#include <optional>

namespace brindlecam::soak {

/// Whether a program that is always at rest when it is looked at takes ever more. What it takes in
/// the first moments of a run is the measure for the rest of that run.
class Growth final {
public:
    /// Looks at a run's footprint; `look` may be asked again until what is too much is given back.
    /// Throws Failure when it is not.
    void look(qint64 pid, const std::function<Footprint()>& footprint, int patience);

    /// A run from its first warm look to its last one.
    struct Stretch {
        Footprint first;
        Footprint last;
        int looks = 0;
    };
    [[nodiscard]] const Stretch& longest() const { return m_longest; }
    /// The one with the most memory.
    [[nodiscard]] const Footprint& most() const { return m_most; }
    [[nodiscard]] int runs() const { return m_runs; }
    /// KiB of memory from one look to the next, over all runs.
    [[nodiscard]] double paceKibibytes() const;

private:
    void beginRun(qint64 pid);

    Stretch m_now;
    Stretch m_longest;
    Footprint m_most;
    qint64 m_pid = 0;
    int m_runs = 0;
    qint64 m_grown = 0;  ///< KiB, in earlier runs
    int m_grownOver = 0; ///< looks, in earlier runs
};

} // namespace brindlecam::soak
