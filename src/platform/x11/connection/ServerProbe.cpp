#include "platform/x11/connection/ServerProbe.h"

#include "platform/x11/connection/X11.h"

#include <xcb/randr.h>

#include <string_view>

namespace brindlecam::x11 {

namespace {

constexpr std::string_view kGuest = "XWAYLAND";

bool hasGuestsExtension(xcb_connection_t* server)
{
    const Owned<xcb_query_extension_reply_t> reply(xcb_query_extension_reply(
        server, xcb_query_extension(server, kGuest.size(), kGuest.data()), nullptr));
    return reply && reply->present;
}

/// Before version 23.1 there is no such extension, but each output is called so, with a number.
bool hasGuestsOutputs(xcb_connection_t* server)
{
    const auto* const randr = xcb_get_extension_data(server, &xcb_randr_id);
    if (!randr || !randr->present)
        return false;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    const Owned<xcb_randr_get_screen_resources_current_reply_t> resources(
        xcb_randr_get_screen_resources_current_reply(
            server, xcb_randr_get_screen_resources_current(server, root), nullptr));
    if (!resources || resources->num_outputs == 0)
        return false;
    const xcb_randr_output_t first =
        *xcb_randr_get_screen_resources_current_outputs(resources.get());
    const Owned<xcb_randr_get_output_info_reply_t> output(xcb_randr_get_output_info_reply(
        server, xcb_randr_get_output_info(server, first, resources->config_timestamp), nullptr));
    if (!output)
        return false;
    const std::string_view name(
        reinterpret_cast<const char*>(xcb_randr_get_output_info_name(output.get())),
        static_cast<std::size_t>(xcb_randr_get_output_info_name_length(output.get())));
    return name.starts_with(kGuest);
}

} // namespace

Session::XServer probeServer()
{
    const OwnConnection server(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(server.get()) != 0)
        return Session::XServer::silent;
    xcb_prefetch_extension_data(server.get(), &xcb_randr_id);
    return hasGuestsExtension(server.get()) || hasGuestsOutputs(server.get())
               ? Session::XServer::insideWayland
               : Session::XServer::itself;
}

} // namespace brindlecam::x11
