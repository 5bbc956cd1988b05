#pragma once

#include "platform/x11/windows/PanelTraits.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <xcb/xcb.h>

namespace brindlecam {

namespace x11 {
class ServerClock;
}

/// Gives a panel the keyboard focus, and keeps it there for those panels that insist on it. Main
/// thread. Lives as long as its widget.
class FocusKeeper final : public QObject {
    Q_OBJECT

public:
    /// `traits` may change while it lives.
    FocusKeeper(QWidget& widget, const x11::PanelTraits& traits, x11::ServerClock& clock);

    /// Now, or when the window is on the screen.
    void focus();
    /// The native window is there, perhaps a new one.
    void watchPresses();

    /// For every event of the server.
    void handle(const xcb_generic_event_t& event);

protected:
    /// A press gives the focus before it arrives.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] xcb_window_t id() const;
    void bringBack();
    void focusNow();
    void insist(const xcb_focus_out_event_t& event);

    QWidget& m_widget;
    const x11::PanelTraits& m_traits;
    x11::ServerClock& m_clock;
    bool m_focusWhenMapped = false;
    QDeadlineTimer m_insists{0}; ///< how long it takes a lost focus back
    int m_insistencesLeft = 0;
    QPointer<QObject> m_watched;
};

} // namespace brindlecam
