#pragma once

#include "platform/TrayHosts.h"

#include <memory>
#include <vector>

namespace brindlecam {

/// Every kind of tray host that this desktop may have, as one.
class LinuxTrayHosts final : public TrayHosts {
public:
    explicit LinuxTrayHosts(std::vector<std::unique_ptr<TrayHosts>> kinds);

    [[nodiscard]] bool available() const override;
    void whenChanged(QObject* context, std::function<void()> changed) override;

private:
    std::vector<std::unique_ptr<TrayHosts>> m_kinds;
};

} // namespace brindlecam
