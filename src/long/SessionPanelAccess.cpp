#include "long/SessionPanelAccess.h"

#include "long/SessionPanel.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace brindlecam::SessionPanelAccess {

namespace {

QAccessibleInterface* made(const QString&, QObject* object)
{
    auto* panel = qobject_cast<SessionPanel*>(object);
    return panel ? new QAccessibleWidget(panel, QAccessible::Dialog) : nullptr;
}

} // namespace

void install()
{
    QAccessible::installFactory(made);
}

} // namespace brindlecam::SessionPanelAccess
