#pragma once

#include "platform/x11/windows/AskedPlaces.h"
#include "platform/x11/windows/PanelTraits.h"

#include <QRect>
#include <QWidget>

#include <xcb/xcb.h>

namespace brindlecam {

/// Keeps a panel's window where it belongs, to the pixel: Qt counts in points, and a window manager
/// has ideas of its own. Main thread; native pixels. Lives as long as its widget.
class PlaceKeeper final {
public:
    /// `traits` may change while it lives.
    PlaceKeeper(QWidget& widget, const x11::PanelTraits& traits);

    /// It is about to be shown there; empty: wherever it is.
    void settle(const QRect& native);
    /// It is shown already, and belongs there from now on.
    void move(const QRect& native);
    /// Asks the server for where it belongs, once more: Qt may have placed it by points since.
    void apply();
    /// Where it was put last, as long as nobody else has moved it from there; empty before it was
    /// shown.
    [[nodiscard]] QRect rect();

    /// For every event of the server.
    void handle(const xcb_generic_event_t& event);

private:
    [[nodiscard]] xcb_window_t id() const;
    void correct(const QRect& actual);
    void correctOnRoot();

    QWidget& m_widget;
    const x11::PanelTraits& m_traits;
    QRect m_native; ///< where it belongs; empty: wherever it is
    x11::AskedPlaces m_asked;
    int m_correctionsLeft = 0;
};

} // namespace brindlecam
