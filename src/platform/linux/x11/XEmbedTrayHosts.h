#pragma once

#include "platform/TrayHosts.h"

#include <QAbstractNativeEventFilter>

#include <xcb/xcb.h>

namespace brindlecam {

/// The classic system tray: whoever owns the tray selection of the screen.
class XEmbedTrayHosts final : public TrayHosts, private QAbstractNativeEventFilter {
public:
    XEmbedTrayHosts();
    ~XEmbedTrayHosts() override;

    [[nodiscard]] bool available() const override { return m_owner != XCB_WINDOW_NONE; }
    void setOnChange(std::function<void()> changed) override;

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

    std::function<void()> m_changed;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
    int m_ownerChangedEvent = -1; ///< event code; negative without XFixes
};

} // namespace brindlecam
