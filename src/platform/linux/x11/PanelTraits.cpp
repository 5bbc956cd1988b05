#include "platform/linux/x11/PanelTraits.h"

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
        return {.flags = kUnmanaged, .type = Qt::WA_X11NetWmWindowTypeDock, .keepsPlace = true};
    case PanelRole::toast:
    case PanelRole::countdown:
        return {.flags = kUntouchable,
                .type = Qt::WA_X11NetWmWindowTypeNotification,
                .blends = true,
                .keepsPlace = true};
    case PanelRole::frame:
        return {.flags = kUntouchable,
                .type = Qt::WA_X11NetWmWindowTypeDock,
                .blends = true,
                .keepsPlace = true};
    case PanelRole::sessionPanel:
    case PanelRole::drawer:
        return {.flags = kUnmanaged, .type = Qt::WA_X11NetWmWindowTypeUtility, .blends = true};
    case PanelRole::pin:
        return {.flags = kBare,
                .type = Qt::WA_X11NetWmWindowTypeUtility,
                .managed = true,
                .blends = true};
    case PanelRole::dialog:
        return {.flags = Qt::WindowStaysOnTopHint,
                .type = Qt::WA_X11NetWmWindowTypeDialog,
                .managed = true,
                .activates = true};
    }
    Q_UNREACHABLE();
}

} // namespace brindlecam::x11
