#include "platform/x11/grab/DrawingPause.h"

#include <utility>

namespace brindlecam {

DrawingPause::DrawingPause(xcb_connection_t* connection)
    : m_connection(connection)
{
    xcb_grab_server(m_connection);
}

DrawingPause::~DrawingPause()
{
    end();
    xcb_flush(m_connection);
}

void DrawingPause::end()
{
    if (std::exchange(m_lasts, false))
        xcb_ungrab_server(m_connection);
}

} // namespace brindlecam
