#include "platform/x11/keys/X11InputGrabs.h"

#include <utility>

namespace brindlecam {

X11InputGrabs::X11InputGrabs()
{
    m_nextLook.setSingleShot(true);
    m_nextLook.setInterval(x11::GrabPatience::kInterval);
    m_nextLook.callOnTimeout([this] { look(); });
}

void X11InputGrabs::clear(QObject* context, Done done)
{
    m_nextLook.stop();
    m_request.reset();
    if (!m_grabs.any()) {
        done(Answer::free);
        return;
    }
    m_request.emplace(Request{.context = context, .done = std::move(done)});
    look();
}

void X11InputGrabs::look()
{
    if (!m_request->context) {
        m_request.reset();
        return;
    }
    switch (m_request->patience.next(m_grabs.look())) {
    case x11::GrabPatience::Step::goOn:
        finish(Answer::free);
        break;
    case x11::GrabPatience::Step::pressEscape:
        m_grabs.pressEscape();
        m_nextLook.start();
        break;
    case x11::GrabPatience::Step::wait:
        m_nextLook.start();
        break;
    case x11::GrabPatience::Step::giveUp:
        finish(Answer::taken);
        break;
    }
}

void X11InputGrabs::finish(Answer answer)
{
    // The call may begin the next request.
    const Done done = std::move(m_request->done);
    m_request.reset();
    done(answer);
}

} // namespace brindlecam
