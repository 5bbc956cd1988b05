#include "platform/x11/connection/X11.h"

#include <QGuiApplication>
#include <QHash>

#include <cstring>
#include <utility>

namespace brindlecam::x11 {

namespace {

QHash<QByteArray, xcb_atom_t>& knownAtoms()
{
    static QHash<QByteArray, xcb_atom_t> atoms;
    return atoms;
}

xcb_intern_atom_cookie_t requestAtom(const QByteArray& name)
{
    return xcb_intern_atom(connection(), 0, static_cast<std::uint16_t>(name.size()),
                           name.constData());
}

xcb_atom_t receiveAtom(const QByteArray& name, xcb_intern_atom_cookie_t cookie)
{
    const Owned<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection(), cookie, nullptr));
    const xcb_atom_t atom = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    knownAtoms().insert(name, atom);
    return atom;
}

} // namespace

xcb_connection_t* connection()
{
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

const xcb_screen_t& screen()
{
    return *xcb_setup_roots_iterator(xcb_get_setup(connection())).data;
}

xcb_window_t root()
{
    return screen().root;
}

xcb_atom_t atom(const char* name)
{
    const QByteArray key(name);
    if (const auto found = knownAtoms().constFind(key); found != knownAtoms().constEnd())
        return *found;
    return receiveAtom(key, requestAtom(key));
}

void internAtoms(std::initializer_list<const char*> names)
{
    std::vector<std::pair<QByteArray, xcb_intern_atom_cookie_t>> asked;
    for (const char* name : names) {
        if (!knownAtoms().contains(QByteArray(name)))
            asked.emplace_back(name, requestAtom(QByteArray(name)));
    }
    for (const auto& [name, cookie] : asked)
        receiveAtom(name, cookie);
}

std::vector<std::uint32_t> property32(xcb_window_t window, xcb_atom_t property, xcb_atom_t type)
{
    return receiveProperty32(requestProperty32(window, property, type));
}

xcb_get_property_cookie_t requestProperty32(xcb_window_t window, xcb_atom_t property,
                                            xcb_atom_t type)
{
    constexpr std::uint32_t kMostWords = 65536;
    return xcb_get_property(connection(), 0, window, property, type, 0, kMostWords);
}

std::vector<std::uint32_t> receiveProperty32(xcb_get_property_cookie_t cookie)
{
    const Owned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection(), cookie, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto count = static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) / 4;
    std::vector<std::uint32_t> values(count);
    if (count > 0)
        std::memcpy(values.data(), xcb_get_property_value(reply.get()), count * 4);
    return values;
}

bool hasWindowManager()
{
    const auto check = property32(root(), atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW);
    if (check.empty())
        return false;
    // The property outlives a window manager that was killed; its check window does not. So EWMH
    // has the window name itself.
    const auto self = property32(check.front(), atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW);
    return !self.empty() && self.front() == check.front();
}

} // namespace brindlecam::x11
