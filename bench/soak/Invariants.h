#pragma once

#include "Growth.h"
#include "LogWatch.h"

#include "desktop/support/Patience.h"

namespace brindlecam::soak {

struct World;

/// What must hold after each step, whatever was done.
class Invariants final {
public:
    explicit Invariants(int patienceMilliseconds = desktop::kPatience);

    /// Throws Failure at the first that does not hold.
    void verify(World& world);
    /// At rest, the program is asked to quit: it does, and nothing stays of it.
    void verifyEnd(World& world);
    [[nodiscard]] const Growth& growth() const { return m_growth; }

private:
    void verifyRun(World& world) const;
    void verifyWindows(World& world) const;
    void verifyRemoved(World& world) const;
    void verifyGrowth(World& world);

    const int m_patience;
    LogWatch m_log;
    Growth m_growth;
};

} // namespace brindlecam::soak
