#include "platform/x11/keys/ForeignGrabs.h"

#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Keyboard.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/keys/MenuLook.h"

#include <xcb/xtest.h>

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace brindlecam::x11 {

namespace {

constexpr std::uint16_t kAnyButton = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3 |
                                     XCB_BUTTON_MASK_4 | XCB_BUTTON_MASK_5;

bool isButtonDown()
{
    const Owned<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection(), xcb_query_pointer(connection(), root()), nullptr));
    return reply && (reply->mask & kAnyButton) != 0;
}

xcb_window_t focusedWindow()
{
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection(), xcb_get_input_focus(connection()), nullptr));
    return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

bool sameClient(xcb_window_t one, xcb_window_t other)
{
    const std::uint32_t client = ~xcb_get_setup(connection())->resource_id_mask;
    return (one & client) == (other & client);
}

bool fillsScreen(const xcb_get_geometry_reply_t& geometry)
{
    return std::ranges::any_of(QGuiApplication::screens(), [&](const QScreen* screen) {
        // Less a point: Qt's size in points is rounded, perhaps up.
        const qreal scale = screen->devicePixelRatio();
        const QSizeF size = (QSizeF(screen->geometry().size()) - QSizeF(1, 1)) * scale;
        return geometry.width >= size.width() && geometry.height >= size.height();
    });
}

MenuLook::Type typeOf(const std::vector<std::uint32_t>& types)
{
    const auto names = [&](const char* name) {
        return std::ranges::find(types, atom(name)) != types.end();
    };
    if (types.empty())
        return MenuLook::Type::none;
    if (names("_NET_WM_WINDOW_TYPE_MENU") || names("_NET_WM_WINDOW_TYPE_POPUP_MENU") ||
        names("_NET_WM_WINDOW_TYPE_DROPDOWN_MENU") || names("_NET_WM_WINDOW_TYPE_COMBO"))
        return MenuLook::Type::menu;
    return types.front() == atom("_NET_WM_WINDOW_TYPE_NORMAL") ? MenuLook::Type::normal
                                                               : MenuLook::Type::other;
}

/// The questions about one window, on their way; the answers must be taken once.
struct LookQuery {
    explicit LookQuery(xcb_window_t window)
        : window(window)
        , attributes(xcb_get_window_attributes(connection(), window))
        , geometry(xcb_get_geometry(connection(), window))
        , types(requestProperty32(window, atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM))
        , state(requestProperty32(window, atom("WM_STATE"), XCB_ATOM_ANY))
        , transient(requestProperty32(window, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW))
    {
    }

    MenuLook::Likeness receive() const
    {
        const Owned<xcb_get_window_attributes_reply_t> seen(
            xcb_get_window_attributes_reply(connection(), attributes, nullptr));
        const Owned<xcb_get_geometry_reply_t> place(
            xcb_get_geometry_reply(connection(), geometry, nullptr));
        MenuLook look{.type = typeOf(receiveProperty32(types)),
                      .managed = !receiveProperty32(state).empty(),
                      .transient = !receiveProperty32(transient).empty()};
        // Windows come and go while we ask.
        if (!seen || !place || seen->map_state != XCB_MAP_STATE_VIEWABLE)
            return MenuLook::Likeness::none;
        look.overrideRedirect = seen->override_redirect != 0;
        look.fillsScreen = fillsScreen(*place);
        return look.likeness();
    }

    xcb_window_t window;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_get_property_cookie_t types;
    xcb_get_property_cookie_t state;
    xcb_get_property_cookie_t transient;
};

/// Of all windows that lie directly on the root, but ours.
std::vector<LookQuery> askAll()
{
    internAtoms({"_NET_WM_WINDOW_TYPE", "WM_STATE", "_NET_WM_WINDOW_TYPE_MENU",
                 "_NET_WM_WINDOW_TYPE_POPUP_MENU", "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
                 "_NET_WM_WINDOW_TYPE_COMBO", "_NET_WM_WINDOW_TYPE_NORMAL"});
    const Owned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection(), xcb_query_tree(connection(), root()), nullptr));
    std::vector<LookQuery> asked;
    if (!tree)
        return asked;
    const xcb_window_t* const first = xcb_query_tree_children(tree.get());
    std::for_each(first, first + xcb_query_tree_children_length(tree.get()),
                  [&](xcb_window_t window) {
                      if (!isOurs(window))
                          asked.emplace_back(window);
                  });
    return asked;
}

} // namespace

ForeignGrabs::ForeignGrabs()
    : m_window(xcb_generate_id(connection()))
{
    xcb_create_window(connection(), XCB_COPY_FROM_PARENT, m_window, root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_prefetch_extension_data(connection(), &xcb_test_id);
}

ForeignGrabs::~ForeignGrabs()
{
    xcb_destroy_window(connection(), m_window);
}

// A grab on a window that is not mapped is refused in any case, but for another client's grab with
// an answer of its own. So nothing is ever taken from anybody, ourselves included, and no window
// hears of it.
ForeignGrabs::Grabs ForeignGrabs::grabs() const
{
    const auto pointer =
        xcb_grab_pointer(connection(), 0, m_window, XCB_EVENT_MASK_NO_EVENT, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
    const auto keyboard = xcb_grab_keyboard(connection(), 0, m_window, XCB_CURRENT_TIME,
                                            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const Owned<xcb_grab_pointer_reply_t> pointerReply(
        xcb_grab_pointer_reply(connection(), pointer, nullptr));
    const Owned<xcb_grab_keyboard_reply_t> keyboardReply(
        xcb_grab_keyboard_reply(connection(), keyboard, nullptr));
    return {.pointer = pointerReply && pointerReply->status == XCB_GRAB_STATUS_ALREADY_GRABBED,
            .keyboard = keyboardReply && keyboardReply->status == XCB_GRAB_STATUS_ALREADY_GRABBED};
}

bool ForeignGrabs::any() const
{
    const Grabs now = grabs();
    return now.pointer || now.keyboard;
}

GrabPatience::Seen ForeignGrabs::look() const
{
    const Grabs now = grabs();
    if (!now.pointer && !now.keyboard)
        return {};
    return {.taken = true, .held = keysDown().any() || isButtonDown(), .menus = openMenus(now)};
}

std::vector<std::uint32_t> ForeignGrabs::openMenus(Grabs grabs) const
{
    std::vector<std::uint32_t> menus;
    if (!grabs.pointer || !canPress())
        return menus;
    const xcb_window_t focused = focusedWindow();
    for (const LookQuery& query : askAll()) {
        const MenuLook::Likeness likeness = query.receive();
        if (likeness == MenuLook::Likeness::none)
            continue;
        // Chromium's menus take the pointer only: keys come through the window that has the focus.
        if (grabs.keyboard ||
            (likeness == MenuLook::Likeness::certain && sameClient(focused, query.window)))
            menus.push_back(query.window);
    }
    std::ranges::sort(menus);
    return menus;
}

bool ForeignGrabs::canPress() const
{
    const auto* test = xcb_get_extension_data(connection(), &xcb_test_id);
    return test && test->present && escapeKey() != 0;
}

void ForeignGrabs::pressEscape() const
{
    const std::uint8_t key = escapeKey();
    // Nobody else is served meanwhile: the menu can't close between the look and the key, which
    // would then go to the window below.
    xcb_grab_server(connection());
    if (!look().menus.empty()) {
        for (const std::uint8_t kind : {XCB_KEY_PRESS, XCB_KEY_RELEASE})
            xcb_test_fake_input(connection(), kind, key, XCB_CURRENT_TIME, root(), 0, 0, 0);
    }
    xcb_ungrab_server(connection());
    xcb_flush(connection());
}

} // namespace brindlecam::x11
