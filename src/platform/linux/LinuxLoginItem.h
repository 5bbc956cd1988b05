#pragma once

#include "base/Background.h"
#include "platform/LoginItem.h"
#include "platform/linux/AutostartEntry.h"

namespace brindlecam {

/// Opening at login by a file that desktop sessions look for. What it says is read each time it is
/// asked for: desktops have settings of their own for it.
class LinuxLoginItem final : public LoginItem {
public:
    LinuxLoginItem();
    LinuxLoginItem(AutostartEntry::Places places, Executor executor);

    void ask(QObject* context, Known known) override;
    void set(bool enabled, QObject* context, Done done) override;

private:
    const AutostartEntry::Places m_places;
    const Background m_background;
};

} // namespace brindlecam
