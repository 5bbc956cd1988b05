#include "platform/x11/windows/AskedPlaces.h"

#include <algorithm>

namespace brindlecam::x11 {

void AskedPlaces::ask(const QRect& place)
{
    if (m_places.empty() || m_places.back() != place)
        m_places.push_back(place);
}

bool AskedPlaces::leadTo(const QRect& seen)
{
    if (m_places.empty())
        return false;
    if (m_places.back() == seen) {
        settle(seen);
        return true;
    }
    const auto hasPlace = [&](const QRect& asked) { return asked.topLeft() == seen.topLeft(); };
    const auto hasSize = [&](const QRect& asked) { return asked.size() == seen.size(); };
    return std::ranges::any_of(m_places, hasPlace) && std::ranges::any_of(m_places, hasSize);
}

} // namespace brindlecam::x11
