#pragma once

#include "Faults.h"
#include "Invariants.h"
#include "Journal.h"
#include "Steps.h"

#include <vector>

namespace brindlecam::soak {

/// A walk through everything a person can do, by chance; at even distances something goes wrong.
/// Each fault strikes once before one strikes again. What must always hold is looked at after every
/// step.
class Walk final {
public:
    Walk(World& world, int steps, Journal& journal);

    /// Throws Failure where something does not hold.
    void run();
    [[nodiscard]] const Growth& growth() const { return m_invariants.growth(); }

private:
    /// A fault that has hold of its part until this step.
    struct Hold {
        const Fault* fault;
        int until;
    };

    void takeStep();
    void strike(const Fault& fault);
    void mend(const Hold& hold);
    void mendDue();
    void mendAll();
    void freePart(Part part);
    [[nodiscard]] bool faultIsDue() const;
    [[nodiscard]] const Fault& dealFault();
    [[nodiscard]] const Step& chooseStep();

    World& m_world;
    const int m_count;
    Journal& m_journal;
    const std::vector<Step> m_steps;
    const std::vector<Fault> m_faults;
    std::vector<const Fault*> m_deck; ///< the next one last
    std::vector<Hold> m_holds;
    Invariants m_invariants;
};

} // namespace brindlecam::soak
