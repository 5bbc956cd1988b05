#pragma once

#include "base/Listeners.h"
#include "platform/TrayHosts.h"
#include "platform/x11/connection/OwnerWatch.h"

namespace brindlecam {

/// The classic system tray: whoever owns the tray selection of the screen.
class XEmbedTrayHosts final : public TrayHosts {
public:
    XEmbedTrayHosts();

    [[nodiscard]] bool available() const override { return m_tray.owned(); }
    void whenChanged(QObject* context, std::function<void()> changed) override;

private:
    Listeners m_listeners;
    OwnerWatch m_tray;
};

} // namespace brindlecam
