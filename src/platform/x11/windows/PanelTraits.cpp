#include "platform/x11/windows/PanelTraits.h"

namespace brindlecam::x11 {

namespace {

constexpr Qt::WindowFlags kBare =
    Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::NoDropShadowWindowHint;
constexpr Qt::WindowFlags kUnmanaged = kBare | Qt::BypassWindowManagerHint;
constexpr Qt::WindowFlags kUntouchable =
    kUnmanaged | Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput;

} // namespace

PanelTraits PanelTraits::of(PanelRole role)
{
    switch (role) {
    case PanelRole::overlay:
        return {.flags = kUnmanaged,
                .type = "_NET_WM_WINDOW_TYPE_DOCK",
                .insists = true,
                .keepsPlace = true};
    case PanelRole::toast:
    case PanelRole::countdown:
        return {.flags = kUntouchable,
                .type = "_NET_WM_WINDOW_TYPE_NOTIFICATION",
                .blends = true,
                .keepsPlace = true};
    case PanelRole::frame:
        return {.flags = kUntouchable,
                .type = "_NET_WM_WINDOW_TYPE_DOCK",
                .blends = true,
                .keepsPlace = true};
    case PanelRole::sessionPanel:
    case PanelRole::drawer:
        return {.flags = kUnmanaged, .type = "_NET_WM_WINDOW_TYPE_UTILITY", .blends = true};
    case PanelRole::dialog:
        return {.flags = Qt::WindowStaysOnTopHint,
                .type = "_NET_WM_WINDOW_TYPE_DIALOG",
                .framed = true,
                .managed = true,
                .activates = true};
    case PanelRole::window:
        // Not a dialog: openbox lays one that belongs to no window over all others of the program.
        return {.type = "_NET_WM_WINDOW_TYPE_NORMAL",
                .framed = true,
                .managed = true,
                .activates = true};
    }
    Q_UNREACHABLE();
}

PanelTraits PanelTraits::ofPin(bool blends)
{
    return {.flags = kBare,
            .type = "_NET_WM_WINDOW_TYPE_UTILITY",
            .managed = true,
            .blends = blends,
            .everywhere = true};
}

} // namespace brindlecam::x11
