#include "platform/x11/grab/BeneathPanels.h"

#include "platform/x11/connection/PatientConnection.h"

#include <string_view>
#include <utility>

namespace brindlecam {

namespace {

constexpr std::string_view kCompositor = "_NET_WM_CM_S0";

/// Whether the server can give windows pixels of their own, and lets others read them.
bool canRedirect(const x11::RootAccess& access)
{
    const auto* const extension = xcb_get_extension_data(access.connection, &xcb_composite_id);
    if (!extension || !extension->present)
        return false;
    const auto version = access.reply<xcb_composite_query_version_reply_t>(
        xcb_composite_query_version(access.connection, 0, 4).sequence);
    return version && (version->major_version > 0 || version->minor_version >= 2);
}

xcb_rectangle_t toXcb(const QRect& rect)
{
    return {static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
            static_cast<std::uint16_t>(rect.width()), static_cast<std::uint16_t>(rect.height())};
}

} // namespace

std::unique_ptr<BeneathPanels> BeneathPanels::make(const x11::RootAccess& access,
                                                   const x11::ClientIds& ours)
{
    if (!access.patient || !canRedirect(access))
        return nullptr;
    const PictureFormats formats(access);
    const auto rootFormat = formats.of(access.patient->screen().root_visual);
    if (!rootFormat)
        return nullptr;
    return std::unique_ptr<BeneathPanels>(new BeneathPanels(access, ours, formats, *rootFormat));
}

BeneathPanels::BeneathPanels(const x11::RootAccess& access, const x11::ClientIds& ours,
                             const PictureFormats& formats, const PictureFormat& rootFormat)
    : m_access(access)
    , m_formats(formats)
    , m_rootFormat(rootFormat)
    , m_stack(access, ours)
    , m_clientArea(access)
    , m_background(access)
{
    const auto atom = access.reply<xcb_intern_atom_reply_t>(
        xcb_intern_atom(access.connection, 0, kCompositor.size(), kCompositor.data()).sequence);
    if (atom)
        m_compositor = atom->atom;
    access.patient->listen([this](const xcb_generic_event_t& event) { note(event); });
    // All of them, also those to come: a window that comes to lie beneath a panel later has lost
    // nothing by then. The server goes on showing them as ever, and ends it with the connection.
    xcb_composite_redirect_subwindows(access.connection, access.root,
                                      XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    m_context = xcb_generate_id(access.connection);
    const std::uint32_t values[] = {XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS, 0};
    xcb_create_gc(access.connection, m_context, access.root,
                  XCB_GC_SUBWINDOW_MODE | XCB_GC_GRAPHICS_EXPOSURES, values);
    xcb_flush(access.connection);
}

BeneathPanels::~BeneathPanels()
{
    m_access.patient->listen({});
}

void BeneathPanels::note(const xcb_generic_event_t& event)
{
    if (m_clientArea.isChange(event) ||
        (m_stack.isChange(event) && !m_background.isOurDoing(event)))
        m_isStale = true;
}

bool BeneathPanels::isComposited() const
{
    const auto owner = m_access.reply<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(m_access.connection, m_compositor).sequence);
    return owner && owner->owner != XCB_WINDOW_NONE;
}

std::optional<BeneathPanels::Picture> BeneathPanels::draw(const QRect& native)
{
    const bool composited = isComposited();
    // Nothing changes within the pause, and this answer came after all that had changed before.
    m_access.patient->tellEvents();
    if (std::exchange(m_isStale, false) || composited != m_isComposited || native != m_native) {
        m_isComposited = composited;
        if (native.size() != m_native.size())
            makeCanvas(native.size());
        m_native = native;
        look();
    }
    if (m_covered.isEmpty())
        return std::nullopt;
    const xcb_rectangle_t all = toXcb(native);
    xcb_copy_area(m_access.connection, m_access.root, m_canvas, m_context, all.x, all.y, 0, 0,
                  all.width, all.height);
    for (const Layer& layer : m_layers)
        copy(layer);
    return Picture{m_canvas, !m_unknown.isEmpty()};
}

void BeneathPanels::makeCanvas(QSize size)
{
    auto* const connection = m_access.connection;
    if (m_canvas != XCB_NONE) {
        xcb_render_free_picture(connection, m_target);
        xcb_free_pixmap(connection, m_canvas);
    }
    m_canvas = xcb_generate_id(connection);
    m_target = xcb_generate_id(connection);
    xcb_create_pixmap(connection, m_access.patient->screen().root_depth, m_canvas, m_access.root,
                      static_cast<std::uint16_t>(size.width()),
                      static_cast<std::uint16_t>(size.height()));
    xcb_render_create_picture(connection, m_target, m_canvas, m_rootFormat.id, 0, nullptr);
}

void BeneathPanels::look()
{
    forgetLayers();
    m_covered = {};
    m_unknown = {};
    const std::vector<StackedWindow> windows = m_stack.touching(m_native);
    for (const StackedWindow& window : windows) {
        if (window.isPanel)
            m_covered += window.shape & m_native;
    }
    if (m_covered.isEmpty())
        return;
    const std::vector<Source> sources = sourcesBeneath(windows);
    addBackground(sources);
    for (const Source& source : sources)
        addLayer(source.pixmap, source.format, source.window.rect.topLeft(),
                 (source.window.shape & m_covered) - m_unknown);
    if (m_isComposited)
        addWhole(windows, sources);
}

std::vector<BeneathPanels::Source>
BeneathPanels::sourcesBeneath(const std::vector<StackedWindow>& windows)
{
    std::vector<std::pair<Source, unsigned int>> asked;
    for (const StackedWindow& window : windows) {
        if (window.isPanel || !window.shape.intersects(m_covered))
            continue;
        const xcb_pixmap_t pixmap = xcb_generate_id(m_access.connection);
        xcb_composite_name_window_pixmap(m_access.connection, window.id, pixmap);
        m_pixmaps.push_back(pixmap);
        const auto format = m_formats.of(window.visual).value_or(PictureFormat{});
        asked.push_back(
            {{window, format, pixmap}, xcb_get_geometry(m_access.connection, pixmap).sequence});
    }
    std::vector<Source> sources;
    for (auto& [source, question] : asked) {
        const auto named = m_access.reply<xcb_get_geometry_reply_t>(question);
        if (named && source.format.id != XCB_NONE)
            sources.push_back(std::move(source));
        else
            m_unknown += source.window.shape & m_covered;
    }
    return sources;
}

void BeneathPanels::addBackground(const std::vector<Source>& sources)
{
    QRegion bare = m_covered - m_unknown;
    for (const Source& source : sources) {
        if (!m_isComposited || !source.format.blends)
            bare -= source.window.shape;
    }
    if (bare.isEmpty())
        return;
    if (m_isComposited) {
        if (const auto told = m_background.told())
            addLayer(told->pixmap, m_rootFormat, told->origin, bare, told->isTile);
        else
            m_unknown += bare;
        return;
    }
    const auto painted = m_background.painted(bare.boundingRect());
    m_pixmaps.push_back(painted.pixmap);
    addLayer(painted.pixmap, m_rootFormat, painted.origin, bare);
}

void BeneathPanels::addWhole(const std::vector<StackedWindow>& windows,
                             const std::vector<Source>& sources)
{
    QRegion hidden = m_covered; // by what lies above, or copied already
    auto source = sources.rbegin();
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        if (source != sources.rend() && source->window.id == window->id) {
            const QRegion opaque = m_clientArea.opaque(*window, source->format.blends);
            addLayer(source->pixmap, source->format, window->rect.topLeft(),
                     (opaque & m_native) - hidden);
            ++source;
        }
        hidden += window->shape;
    }
}

void BeneathPanels::addLayer(xcb_pixmap_t pixmap, const PictureFormat& format, QPoint origin,
                             const QRegion& area, bool isTile)
{
    if (area.isEmpty())
        return;
    const xcb_render_picture_t picture = xcb_generate_id(m_access.connection);
    const std::uint32_t values[] = {isTile ? XCB_RENDER_REPEAT_NORMAL : XCB_RENDER_REPEAT_NONE};
    xcb_render_create_picture(m_access.connection, picture, pixmap, format.id, XCB_RENDER_CP_REPEAT,
                              values);
    m_layers.push_back({picture, origin, area});
}

void BeneathPanels::copy(const Layer& layer) const
{
    const QRegion area = layer.area.translated(-m_native.topLeft());
    std::vector<xcb_rectangle_t> rects;
    for (const QRect& rect : area)
        rects.push_back(toXcb(rect));
    xcb_render_set_picture_clip_rectangles(m_access.connection, m_target, 0, 0,
                                           static_cast<std::uint32_t>(rects.size()), rects.data());
    const xcb_rectangle_t to = toXcb(area.boundingRect());
    const QPoint from = layer.area.boundingRect().topLeft() - layer.origin;
    // Without a compositor the server shows windows' colours as if all were opaque.
    const std::uint8_t how = m_isComposited ? XCB_RENDER_PICT_OP_OVER : XCB_RENDER_PICT_OP_SRC;
    xcb_render_composite(m_access.connection, how, layer.picture, XCB_NONE, m_target,
                         static_cast<std::int16_t>(from.x()), static_cast<std::int16_t>(from.y()),
                         0, 0, to.x, to.y, to.width, to.height);
}

void BeneathPanels::forgetLayers()
{
    for (const Layer& layer : m_layers)
        xcb_render_free_picture(m_access.connection, layer.picture);
    for (const xcb_pixmap_t pixmap : m_pixmaps)
        xcb_free_pixmap(m_access.connection, pixmap);
    m_layers.clear();
    m_pixmaps.clear();
}

} // namespace brindlecam
