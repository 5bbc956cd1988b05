#include "settings/SettingsWindowController.h"

#include "base/ScreenInfo.h"
#include "platform/Platform.h"

#include <QMetaObject>

#include <algorithm>
#include <optional>
#include <utility>

namespace brindlecam {

namespace {

/// In the middle of the screen, so many points large, and with its beginning on it in any case;
/// empty where there is no screen.
QRect centred(const QSize& points, const std::optional<ScreenInfo>& screen)
{
    if (!screen)
        return {};
    QRect place(QPoint(), (QSizeF(points) * screen->scale).toSize());
    place.moveCenter(screen->visibleFrame.center());
    place.moveLeft(std::max(place.left(), screen->visibleFrame.left()));
    place.moveTop(std::max(place.top(), screen->visibleFrame.top()));
    return place;
}

} // namespace

SettingsWindowController::SettingsWindowController(SettingsWindow::Rooms rooms)
    : m_rooms(std::move(rooms))
{
}

// A recorder that records until now has the hot keys taken again: while its window is whole.
SettingsWindowController::~SettingsWindowController()
{
    close();
}

void SettingsWindowController::make()
{
    Panels& panels = *m_rooms.platform.panels;
    m_window = std::make_unique<SettingsWindow>(m_rooms);
    panels.assume(*m_window, PanelRole::window, {});
    // What it was painted into goes back to the system; Qt hides it first.
    m_window->onClosed = [&panels, window = m_window.get()] {
        QMetaObject::invokeMethod(
            window,
            [&panels, window] {
                if (!window->isVisible())
                    panels.putAway(*window);
            },
            Qt::QueuedConnection);
    };
}

void SettingsWindowController::show()
{
    if (!m_window)
        make();
    m_window->refresh();
    m_window->adjustSize();
    m_rooms.platform.panels->show(
        *m_window, centred(m_window->size(), screenUnderPointer(*m_rooms.platform.displays)));
    m_rooms.platform.panels->focus(*m_window);
}

void SettingsWindowController::close()
{
    if (m_window)
        m_window->close();
}

void SettingsWindowController::hotKeysAnswered()
{
    if (m_window)
        m_window->shortcuts().hotKeysAnswered();
}

} // namespace brindlecam
