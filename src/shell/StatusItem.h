#pragma once

#include <QObject>

#include <memory>

class QSystemTrayIcon;

namespace brindlecam {

class StatusMenu;
class TrayHosts;

/// The icon in the desktop's tray, there as long as the desktop has a place for it: it comes when a
/// host appears later, goes with it, and is made anew for another one. Main thread.
class StatusItem final {
public:
    /// `hosted` is the menu the host shows, which may draw it itself; `own` is what a plain click
    /// opens.
    StatusItem(TrayHosts& hosts, StatusMenu& hosted, StatusMenu& own);
    ~StatusItem();

    [[nodiscard]] bool present() const { return m_icon != nullptr; }

private:
    void renew();

    TrayHosts& m_hosts;
    StatusMenu& m_hosted;
    StatusMenu& m_own;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    QObject m_context; ///< ends our listening
};

} // namespace brindlecam
