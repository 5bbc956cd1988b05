#include "Walk.h"

#include "Captures.h"

#include <algorithm>

namespace brindlecam::soak {

namespace {

/// Steps from one fault to the next on a long walk; short ones meet each fault once all the same.
constexpr int kPace = 8;
constexpr int kLongestHold = 6; // steps

} // namespace

Walk::Walk(World& world, int steps, Journal& journal)
    : m_world(world)
    , m_count(steps)
    , m_journal(journal)
    , m_steps(allSteps())
    , m_faults(allFaults())
{
}

void Walk::run()
{
    for (m_world.step = 1; m_world.step <= m_count; ++m_world.step) {
        mendDue();
        if (faultIsDue())
            strike(dealFault());
        else
            takeStep();
        m_invariants.verify(m_world);
        m_journal.end();
    }
    m_journal.begin(m_count, Journal::Kind::step, QStringLiteral("comes to the end"));
    Captures::reach(m_world, Situation::rest);
    mendAll();
    m_invariants.verify(m_world);
    m_invariants.verifyEnd(m_world);
    m_journal.end();
}

bool Walk::faultIsDue() const
{
    const int all = static_cast<int>(m_faults.size());
    const int strikes = std::max(m_count / kPace, std::min(all, m_count));
    const auto before = [&](int step) { return qint64(step) * strikes / m_count; };
    return before(m_world.step) > before(m_world.step - 1);
}

// Runs are as long as they can be: only a long one shows what grows slowly.
const Fault& Walk::dealFault()
{
    if (m_deck.empty()) {
        for (const Run run : {Run::another, Run::goesOn}) {
            std::vector<const Fault*> some;
            for (const Fault& fault : m_faults) {
                if (fault.run == run)
                    some.push_back(&fault);
            }
            m_world.chance.shuffle(some);
            m_deck.insert(m_deck.end(), some.begin(), some.end());
        }
    }
    const Fault& next = *m_deck.back();
    m_deck.pop_back();
    return next;
}

void Walk::strike(const Fault& fault)
{
    const QString name = QString::fromUtf8(fault.name);
    freePart(fault.part);
    m_journal.begin(m_world.step, Journal::Kind::fault, name);
    if (!fault.isPossible(m_world)) {
        m_journal.leaveOut(name);
        return;
    }
    Captures::reach(m_world, fault.where);
    // A fault that is to meet a picture on its way brings one on its way.
    m_world.ledger->verify(m_world.person.desktop().clipboard());
    fault.strike(m_world);
    if (fault.mend)
        m_holds.push_back({&fault, m_world.step + m_world.chance.between(1, kLongestHold)});
}

void Walk::mend(const Hold& hold)
{
    m_journal.begin(m_world.step, Journal::Kind::mending, QString::fromUtf8(hold.fault->name));
    hold.fault->mend(m_world);
    m_journal.end();
}

void Walk::mendDue()
{
    if (m_world.situation() != Situation::rest)
        return;
    const auto isDue = [this](const Hold& hold) { return hold.until <= m_world.step; };
    for (const Hold& hold : m_holds) {
        if (isDue(hold))
            mend(hold);
    }
    std::erase_if(m_holds, isDue);
}

void Walk::mendAll()
{
    for (const Hold& hold : m_holds)
        mend(hold);
    m_holds.clear();
}

void Walk::freePart(Part part)
{
    const auto hasIt = [part](const Hold& hold) {
        return part != Part::nothing && hold.fault->part == part;
    };
    const auto held = std::ranges::find_if(m_holds, hasIt);
    if (held == m_holds.end())
        return;
    Captures::reach(m_world, Situation::rest);
    mend(*held);
    m_holds.erase(held);
}

const Step& Walk::chooseStep()
{
    const auto isPossible = [this](const Step& step) {
        return step.where == m_world.situation() && step.isPossible(m_world);
    };
    int all = 0;
    for (const Step& step : m_steps)
        all += isPossible(step) ? step.weight : 0;
    int left = m_world.chance.below(all);
    const auto chosen = std::ranges::find_if(m_steps, [&](const Step& step) {
        left -= isPossible(step) ? step.weight : 0;
        return left < 0;
    });
    return *chosen;
}

void Walk::takeStep()
{
    const Step& step = chooseStep();
    m_journal.begin(m_world.step, Journal::Kind::step, QString::fromUtf8(step.name));
    step.act(m_world);
}

} // namespace brindlecam::soak
