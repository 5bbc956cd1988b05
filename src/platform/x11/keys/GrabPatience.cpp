#include "platform/x11/keys/GrabPatience.h"

namespace brindlecam::x11 {

namespace {

constexpr int looksWithin(std::chrono::milliseconds time)
{
    return static_cast<int>(time / GrabPatience::kInterval);
}

// A grab that was about to end: a click, a program that has just let a key go.
constexpr int kQuietLooks = looksWithin(std::chrono::milliseconds(250));
// A busy program takes its time to close a menu; a key or button may be held for long.
constexpr int kMostLooks = looksWithin(std::chrono::seconds(3));

} // namespace

GrabPatience::Step GrabPatience::next(const Seen& seen)
{
    if (!seen.taken)
        return Step::goOn;
    if (++m_looks > kMostLooks)
        return Step::giveUp;
    if (deservesEscape(seen)) {
        ++m_escapes;
        m_quietLooks = 0;
        m_closing = seen.menus;
        return Step::pressEscape;
    }
    const bool closing = m_escapes > 0 && seen.menus == m_closing;
    m_quietLooks = seen.held || closing ? 0 : m_quietLooks + 1;
    return m_quietLooks > kQuietLooks ? Step::giveUp : Step::wait;
}

bool GrabPatience::deservesEscape(const Seen& seen) const
{
    return !seen.held && !seen.menus.empty() && seen.menus != m_closing && m_escapes < kMostEscapes;
}

} // namespace brindlecam::x11
