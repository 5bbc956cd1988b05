#include "long/SessionChrome.h"

#include "long/ChromePlacement.h"
#include "long/SessionFrame.h"
#include "long/SessionPanel.h"
#include "platform/Platform.h"

#include <utility>

namespace brindlecam {

namespace {

/// Off the screen now, and gone when nobody is at work in it any more: a click in it may be what
/// ends it.
template <typename Panel>
void putAway(Panels& panels, std::unique_ptr<Panel> panel)
{
    if (!panel)
        return;
    panels.putAway(*panel);
    panel.release()->deleteLater();
}

} // namespace

SessionChrome::SessionChrome(Platform& platform, const Activity& activity)
    : m_platform(platform)
    , m_tip({*platform.panels, *platform.displays, *platform.compositing}, activity)
{
}

SessionChrome::~SessionChrome()
{
    close();
}

void SessionChrome::show(Session session)
{
    close();
    m_session = std::move(session);
    const auto places = ChromePlacement::places(m_session.captured, m_session.screen);
    showFrame(places.frame);
    showPanel(places.panel);
    m_panelInside = places.panelInside;
    takeKeys();
}

void SessionChrome::setText(const QString& status)
{
    if (m_panel)
        m_panel->setStatus(status);
}

QString SessionChrome::status() const
{
    return m_panel ? m_panel->status() : QString();
}

void SessionChrome::close()
{
    if (!isShown())
        return;
    m_keys.clear();
    // The press that a double click has left is not for the program below.
    m_platform.panels->swallowDoubleClick();
    putAway(*m_platform.panels, std::move(m_frame));
    removePanel();
    m_session = {};
}

void SessionChrome::removePanel()
{
    m_tip.dismiss();
    if (!m_panel)
        return;
    m_panel->onDone = {};
    m_panel->onCancel = {};
    putAway(*m_platform.panels, std::move(m_panel));
}

bool SessionChrome::withdrawPanel()
{
    if (!m_panel || !m_panelInside || m_keys.empty())
        return false;
    removePanel();
    return true;
}

void SessionChrome::showFrame(const QRect& native)
{
    m_frame = std::make_unique<SessionFrame>(*m_platform.panels, native, m_session.captured,
                                             m_session.screen.scale, m_session.color);
    m_frame->appear();
}

void SessionChrome::showPanel(const QRect& native)
{
    const qreal scale = m_session.screen.scale;
    m_panel =
        std::make_unique<SessionPanel>(*m_platform.panels, *m_platform.compositing, native, scale,
                                       SessionPanel::Words{m_session.status, m_session.doneTitle});
    m_panel->onDone = [this] { done(); };
    m_panel->onCancel = [this] { cancel(); };
    m_tip.serve(
        *m_panel,
        [native, scale](QPointF place) { return native.topLeft() + (place * scale).toPoint(); },
        m_session.captured);
    m_panel->appear();
}

void SessionChrome::takeKeys()
{
    const auto take = [this](PlainKey key, std::function<void()> pressed) {
        if (auto taken = m_platform.hotKeys->takeKey(key, std::move(pressed)))
            m_keys.push_back(std::move(taken));
    };
    take(PlainKey::escape, [this] { cancel(); });
    take(PlainKey::returnKey, [this] { done(); });
    take(PlainKey::keypadEnter, [this] { done(); });
}

// Whoever is called may close this, or end it.

void SessionChrome::done()
{
    if (const auto onDone = m_session.onDone)
        onDone();
}

void SessionChrome::cancel()
{
    if (const auto onCancel = m_session.onCancel)
        onCancel();
}

} // namespace brindlecam
