#include "shell/StatusItem.h"

#include "look/Symbols.h"
#include "platform/TrayHosts.h"
#include "preferences/Config.h"
#include "shell/StatusMenu.h"

#include <QCursor>
#include <QSystemTrayIcon>

namespace brindlecam {

StatusItem::StatusItem(TrayHosts& hosts, StatusMenu& hosted, StatusMenu& own)
    : m_hosts(hosts)
    , m_hosted(hosted)
    , m_own(own)
{
    m_hosts.whenChanged(&m_context, [this] { renew(); });
    renew();
}

StatusItem::~StatusItem() = default;

void StatusItem::renew()
{
    m_icon.reset();
    if (!m_hosts.available())
        return;
    m_icon = std::make_unique<QSystemTrayIcon>(
        Symbols::icon(QStringLiteral("leaf.fill"), Config::leafGreen));
    m_icon->setToolTip(QStringLiteral("Brindlecam"));
    m_icon->setContextMenu(&m_hosted.menu());
    QObject::connect(m_icon.get(), &QSystemTrayIcon::activated, m_icon.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger)
                             m_own.menu().popup(QCursor::pos());
                     });
    m_icon->show();
    // Only now the menu knows who draws it.
    m_hosted.refresh();
}

} // namespace brindlecam
