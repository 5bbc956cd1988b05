#include "desktop/support/x11/Connection.h"

#include <xcb/xcb_keysyms.h>

#include <cstring>

namespace brindlecam::desktop {

namespace {

struct SymbolsDeleter {
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
};
using Symbols = std::unique_ptr<xcb_key_symbols_t, SymbolsDeleter>;

} // namespace

Connection::Connection(const QString& display)
{
    int number = 0;
    m_connection = xcb_connect(display.toLocal8Bit().constData(), &number);
    if (xcb_connection_has_error(m_connection) != 0)
        qFatal("no X server answers on display %s", qPrintable(display));
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
}

Connection::~Connection()
{
    xcb_disconnect(m_connection);
}

xcb_atom_t Connection::atom(const QByteArray& name) const
{
    if (const auto known = m_atoms.constFind(name); known != m_atoms.constEnd())
        return *known;
    const auto cookie =
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const Owned<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(m_connection, cookie, nullptr));
    const xcb_atom_t atom = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    m_atoms.insert(name, atom);
    return atom;
}

QByteArray Connection::atomName(xcb_atom_t atom) const
{
    if (const auto known = m_atomNames.constFind(atom); known != m_atomNames.constEnd())
        return *known;
    const Owned<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(m_connection, xcb_get_atom_name(m_connection, atom), nullptr));
    if (!reply)
        return {};
    return *m_atomNames.insert(atom, QByteArray(xcb_get_atom_name_name(reply.get()),
                                                xcb_get_atom_name_name_length(reply.get())));
}

std::vector<std::uint32_t> Connection::property32(xcb_window_t window, const QByteArray& name) const
{
    constexpr std::uint32_t kMostWords = 65536;
    const auto cookie =
        xcb_get_property(m_connection, 0, window, atom(name), XCB_ATOM_ANY, 0, kMostWords);
    const Owned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection, cookie, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto count = static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) / 4;
    std::vector<std::uint32_t> values(count);
    if (count > 0)
        std::memcpy(values.data(), xcb_get_property_value(reply.get()), count * 4);
    return values;
}

xcb_window_t Connection::selectionOwner(const QByteArray& selection) const
{
    const auto cookie = xcb_get_selection_owner(m_connection, atom(selection));
    const Owned<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_connection, cookie, nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

std::vector<xcb_keycode_t> Connection::keycodes(xcb_keysym_t keysym) const
{
    const Symbols symbols(xcb_key_symbols_alloc(m_connection));
    const Owned<xcb_keycode_t> found(xcb_key_symbols_get_keycode(symbols.get(), keysym));
    std::vector<xcb_keycode_t> codes;
    for (const xcb_keycode_t* code = found.get(); code && *code != XCB_NO_SYMBOL; ++code)
        codes.push_back(*code);
    return codes;
}

xcb_keysym_t Connection::keysym(xcb_keycode_t code) const
{
    const Symbols symbols(xcb_key_symbols_alloc(m_connection));
    return xcb_key_symbols_get_keysym(symbols.get(), code, 0);
}

bool Connection::isKeyGrabbedByOther(xcb_keysym_t keysym, std::uint16_t modifiers) const
{
    // Trying is the only way to ask. Nobody else gets a word in meanwhile: a program that wants the
    // key right now would be refused because of us.
    xcb_grab_server(m_connection);
    bool grabbed = false;
    for (const xcb_keycode_t code : keycodes(keysym)) {
        const auto cookie = xcb_grab_key_checked(m_connection, 1, root(), modifiers, code,
                                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const Owned<xcb_generic_error_t> error(xcb_request_check(m_connection, cookie));
        if (error)
            grabbed = grabbed || error->error_code == XCB_ACCESS;
        else
            xcb_ungrab_key(m_connection, code, root(), modifiers);
    }
    xcb_ungrab_server(m_connection);
    sync();
    return grabbed;
}

bool Connection::hasWindowManager() const
{
    const QByteArray check = QByteArrayLiteral("_NET_SUPPORTING_WM_CHECK");
    const auto announced = property32(root(), check);
    // The property outlives a window manager that was killed; its window does not.
    return !announced.empty() && property32(announced.front(), check) == announced;
}

void Connection::sync() const
{
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

} // namespace brindlecam::desktop
