#pragma once

#include "platform/x11/connection/RootAccess.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/grab/ClientArea.h"
#include "platform/x11/grab/PictureFormats.h"
#include "platform/x11/grab/RootBackground.h"
#include "platform/x11/grab/WindowStack.h"

#include <QRect>
#include <QRegion>

#include <xcb/composite.h>
#include <xcb/render.h>

#include <memory>
#include <optional>
#include <vector>

namespace brindlecam {

/// Draws a rectangle of the desktop as if our panels were not there: what they cover is put
/// together from the windows' own pixels, which the server keeps as long as this lives (Composite).
/// On its connection's thread, which has to be a patient one; native pixels of the global desktop.
///
/// What a compositor shows is a moment older than the windows' own pixels. So where one runs, the
/// program beneath a panel is taken from its own pixels all over the rectangle: a page that is
/// scrolled is of one moment. What a compositor adds there, a shadow for example, is not in it.
class BeneathPanels final {
public:
    /// Panels are made by the client with these numbers. Null where the server can't do it. Round
    /// trips.
    [[nodiscard]] static std::unique_ptr<BeneathPanels> make(const x11::RootAccess& access,
                                                             const x11::ClientIds& ours);
    ~BeneathPanels();
    BeneathPanels(const BeneathPanels&) = delete;
    BeneathPanels& operator=(const BeneathPanels&) = delete;

    struct Picture {
        xcb_pixmap_t pixels; ///< as large as the rectangle, of the root's depth
        bool showsPanels;    ///< in parts: what lies beneath is not known there
    };
    /// None where no panel lies in the rectangle. Within a pause of all drawing; the picture may be
    /// read after that, until the next one. Round trips.
    [[nodiscard]] std::optional<Picture> draw(const QRect& native);

private:
    /// Pixels to copy from, beginning somewhere on the desktop.
    struct Layer {
        xcb_render_picture_t picture;
        QPoint origin;
        QRegion area; ///< what of the desktop is copied
    };
    struct Source {
        StackedWindow window;
        PictureFormat format;
        xcb_pixmap_t pixmap;
    };

    BeneathPanels(const x11::RootAccess& access, const x11::ClientIds& ours,
                  const PictureFormats& formats, const PictureFormat& rootFormat);

    void note(const xcb_generic_event_t& event);
    [[nodiscard]] bool isComposited() const;
    void makeCanvas(QSize size);

    /// Finds out anew what has to be copied.
    void look();
    [[nodiscard]] std::vector<Source> sourcesBeneath(const std::vector<StackedWindow>& windows);
    void addBackground(const std::vector<Source>& sources);
    void addWhole(const std::vector<StackedWindow>& windows, const std::vector<Source>& sources);
    void addLayer(xcb_pixmap_t pixmap, const PictureFormat& format, QPoint origin,
                  const QRegion& area, bool isTile = false);
    void copy(const Layer& layer) const;
    void forgetLayers();

    const x11::RootAccess& m_access;
    const PictureFormats m_formats;
    const PictureFormat m_rootFormat;
    const WindowStack m_stack;
    const ClientArea m_clientArea;
    const RootBackground m_background;
    xcb_atom_t m_compositor = XCB_ATOM_NONE; ///< the selection of whoever is one
    xcb_gcontext_t m_context = XCB_NONE;

    QRect m_native;
    xcb_pixmap_t m_canvas = XCB_NONE;
    xcb_render_picture_t m_target = XCB_NONE; ///< the canvas
    bool m_isComposited = false;
    bool m_isStale = true;       ///< another stack since the last look
    QRegion m_covered;           ///< by panels
    QRegion m_unknown;           ///< of that
    std::vector<Layer> m_layers; ///< the lowest first
    std::vector<xcb_pixmap_t> m_pixmaps;
};

} // namespace brindlecam
