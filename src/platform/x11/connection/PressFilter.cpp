#include "platform/x11/connection/PressFilter.h"

namespace brindlecam::x11 {

bool PressFilter::pressed(std::uint8_t code, xcb_timestamp_t time) const
{
    return m_released[code] != time;
}

void PressFilter::released(std::uint8_t code, xcb_timestamp_t time)
{
    m_released[code] = time;
}

} // namespace brindlecam::x11
