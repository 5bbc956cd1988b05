#include "long/LongSessions.h"

namespace brindlecam {

LongSessions::LongSessions(const ScrollCapture::Rooms& rooms)
    : m_scroll(rooms)
{
}

bool LongSessions::available(LongCapture kind) const
{
    return kind == LongCapture::scroll;
}

void LongSessions::start(LongCapture kind, const QRect& native, const ScreenInfo& screen)
{
    if (kind == LongCapture::scroll)
        m_scroll.start(native, screen);
}

void LongSessions::cancel()
{
    m_scroll.cancel();
}

} // namespace brindlecam
