#include "desktop/support/x11/X11Holdings.h"

#include <xcb/res.h>

namespace brindlecam::desktop {

namespace {

using ClientIds = Owned<xcb_res_query_client_ids_reply_t>;

/// The processes of all clients, or of the one that made a resource.
ClientIds clientIds(const Connection& connection, std::uint32_t resource)
{
    xcb_connection_t* const raw = connection.raw();
    const Owned<xcb_res_query_version_reply_t> version(
        xcb_res_query_version_reply(raw, xcb_res_query_version(raw, 1, 2), nullptr));
    const xcb_res_client_id_spec_t wanted{resource, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto cookie = xcb_res_query_client_ids(raw, 1, &wanted);
    ClientIds ids(xcb_res_query_client_ids_reply(raw, cookie, nullptr));
    if (!version || !ids)
        qFatal("the X server tells nothing about its clients");
    return ids;
}

qint64 processOf(const xcb_res_client_id_value_t& id)
{
    return xcb_res_client_id_value_value_length(&id) > 0 ? *xcb_res_client_id_value_value(&id) : 0;
}

/// A number of each client of the process, by which the server knows it.
std::vector<std::uint32_t> clientsOf(const Connection& connection, qint64 pid)
{
    constexpr std::uint32_t kEverybody = 0;
    std::vector<std::uint32_t> clients;
    const ClientIds ids = clientIds(connection, kEverybody);
    for (auto id = xcb_res_query_client_ids_ids_iterator(ids.get()); id.rem > 0;
         xcb_res_client_id_value_next(&id)) {
        if (processOf(*id.data) == pid)
            clients.push_back(id.data->spec.client);
    }
    return clients;
}

void count(const Connection& connection, std::uint32_t client, Holdings& holdings)
{
    xcb_connection_t* const raw = connection.raw();
    const auto cookie = xcb_res_query_client_resources(raw, client);
    const Owned<xcb_res_query_client_resources_reply_t> reply(
        xcb_res_query_client_resources_reply(raw, cookie, nullptr));
    if (!reply)
        return; // gone meanwhile
    for (auto type = xcb_res_query_client_resources_types_iterator(reply.get()); type.rem > 0;
         xcb_res_type_next(&type)) {
        const QByteArray name = connection.atomName(type.data->resource_type);
        int& kind = name == "WINDOW"   ? holdings.windows
                    : name == "PIXMAP" ? holdings.pictures
                                       : holdings.others;
        kind += static_cast<int>(type.data->count);
    }
}

qint64 pictureBytes(const Connection& connection, std::uint32_t client)
{
    const auto cookie = xcb_res_query_client_pixmap_bytes(connection.raw(), client);
    const Owned<xcb_res_query_client_pixmap_bytes_reply_t> reply(
        xcb_res_query_client_pixmap_bytes_reply(connection.raw(), cookie, nullptr));
    return reply ? (qint64(reply->bytes_overflow) << 32) + reply->bytes : 0;
}

} // namespace

qint64 makerOf(const Connection& connection, std::uint32_t resource)
{
    if (resource == XCB_NONE)
        return 0;
    const ClientIds ids = clientIds(connection, resource);
    const auto first = xcb_res_query_client_ids_ids_iterator(ids.get());
    return first.rem > 0 ? processOf(*first.data) : 0;
}

Holdings holdingsOf(const Connection& connection, qint64 pid)
{
    Holdings holdings;
    for (const std::uint32_t client : clientsOf(connection, pid)) {
        ++holdings.connections;
        count(connection, client, holdings);
        holdings.pictureBytes += pictureBytes(connection, client);
    }
    return holdings;
}

} // namespace brindlecam::desktop
