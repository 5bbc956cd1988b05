#include "x11/ports/Page.h"

#include "desktop/support/Patience.h"
#include "desktop/support/x11/X11Geometry.h"
#include "desktop/support/x11/X11Pictures.h"

#include <QRegion>

#include <xcb/shape.h>

#include <array>

namespace brindlecam::test {

namespace {

using Alpha = PageOptions::Alpha;

constexpr QSize kLong(1200, 1200);
constexpr QRgb kHalf = 0x80000000;

/// No row like the next hundred; only colours that depth 16 has, too, or half of them.
QImage longPage(const PageOptions& options)
{
    constexpr std::array<QRgb, 7> kColours{0xff0000, 0xff00, 0xff, 0xffff00, 0xff00ff, 0xffff, 0};
    QImage image(kLong, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int index = x * (1 + options.kind) + 3 * y + y * y / 53 + x / 41 + options.kind;
            const QRgb colour = kColours[static_cast<std::size_t>(index % 7)];
            line[x] =
                options.alpha == Alpha::half ? kHalf | (colour & 0x808080) : 0xff000000 | colour;
        }
    }
    return image;
}

xcb_visualid_t visualOf(const xcb_screen_t& screen, std::uint8_t depth)
{
    if (depth == screen.root_depth)
        return screen.root_visual;
    for (auto item = xcb_screen_allowed_depths_iterator(&screen); item.rem > 0;
         xcb_depth_next(&item)) {
        if (item.data->depth == depth)
            return xcb_depth_visuals_iterator(item.data).data->visual_id;
    }
    qFatal("no visual of depth %d", depth);
}

std::uint16_t sixteen(int value)
{
    return static_cast<std::uint16_t>(value);
}

} // namespace

Page::Page(const PageOptions& options)
    : m_long(longPage(options))
    , m_depth(options.alpha != Alpha::none ? 32 : m_connection.screen().root_depth)
    , m_pixels(desktop::uploaded(m_connection, m_long, m_depth))
{
    auto* const raw = m_connection.raw();
    const xcb_visualid_t visual = visualOf(m_connection.screen(), m_depth);
    const xcb_colormap_t colours = xcb_generate_id(raw);
    xcb_create_colormap(raw, XCB_COLORMAP_ALLOC_NONE, colours, m_connection.root(), visual);
    m_window = xcb_generate_id(raw);
    const std::uint32_t values[] = {
        options.repaints ? m_pixels : static_cast<xcb_pixmap_t>(XCB_BACK_PIXMAP_NONE),
        m_depth == 16 ? 0xf81fU : kBorder, options.managed ? 0U : 1U, colours};
    const QRect& rect = options.rect;
    xcb_create_window(
        raw, m_depth, m_window, m_connection.root(),
        static_cast<std::int16_t>(rect.x() - options.border),
        static_cast<std::int16_t>(rect.y() - options.border), sixteen(rect.width()),
        sixteen(rect.height()), sixteen(options.border), XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
        XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP,
        values);
    // The place is the user's wish, and that of the inside.
    std::vector<std::uint32_t> hints(18, 0);
    hints[0] = 1 | 2 | 512;
    hints[17] = XCB_GRAVITY_STATIC;
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, static_cast<std::uint32_t>(hints.size()),
                        hints.data());
    m_context = xcb_generate_id(raw);
    const std::uint32_t without[] = {0};
    xcb_create_gc(raw, m_context, m_window, XCB_GC_GRAPHICS_EXPOSURES, without);
    xcb_map_window(raw, m_window);
    m_connection.sync();
    if (options.managed && m_connection.hasWindowManager() &&
        !desktop::waitUntil([this] { return isFramed(); }))
        qFatal("the window manager does not show the page");
    scrollTo(0);
}

void Page::scrollTo(int row)
{
    m_row = row;
    const QRect inside = rect();
    xcb_copy_area(m_connection.raw(), m_pixels, m_window, m_context, 0,
                  static_cast<std::int16_t>(row), 0, 0, sixteen(inside.width()),
                  sixteen(inside.height()));
    m_connection.sync();
}

void Page::place(const QRect& rect)
{
    configure(XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                  XCB_CONFIG_WINDOW_HEIGHT,
              {rect.x(), rect.y(), rect.width(), rect.height()});
    scrollTo(m_row);
}

void Page::raise()
{
    configure(XCB_CONFIG_WINDOW_STACK_MODE, {XCB_STACK_MODE_ABOVE});
}

void Page::configure(std::uint16_t what, const std::vector<std::int32_t>& values)
{
    xcb_configure_window(m_connection.raw(), m_window, what, values.data());
    m_connection.sync();
}

void Page::cutOut(const QRect& hole)
{
    std::vector<xcb_rectangle_t> rects;
    for (const QRect& left : QRegion(QRect({}, rect().size())) - hole)
        rects.push_back({static_cast<std::int16_t>(left.x()), static_cast<std::int16_t>(left.y()),
                         sixteen(left.width()), sixteen(left.height())});
    xcb_shape_rectangles(m_connection.raw(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                         XCB_CLIP_ORDERING_UNSORTED, m_window, 0, 0,
                         static_cast<std::uint32_t>(rects.size()), rects.data());
    m_connection.sync();
}

void Page::sayOpaque()
{
    const QSize size = rect().size();
    const std::uint32_t all[] = {0, 0, static_cast<std::uint32_t>(size.width()),
                                 static_cast<std::uint32_t>(size.height())};
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, m_window,
                        m_connection.atom("_NET_WM_OPAQUE_REGION"), XCB_ATOM_CARDINAL, 32, 4, all);
    m_connection.sync();
}

QRect Page::rect() const
{
    return desktop::insideOf(m_connection, m_window);
}

QImage Page::image() const
{
    return m_long.copy({{0, m_row}, rect().size()});
}

bool Page::isFramed() const
{
    const desktop::Owned<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        m_connection.raw(), xcb_query_tree(m_connection.raw(), m_window), nullptr));
    const desktop::Owned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(
            m_connection.raw(), xcb_get_window_attributes(m_connection.raw(), m_window), nullptr));
    return tree && tree->parent != m_connection.root() && attributes &&
           attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

} // namespace brindlecam::test
