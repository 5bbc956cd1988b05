#include "platform/linux/LinuxLoginItem.h"

#include "base/Text.h"
#include "base/WorkPool.h"

#include <QPointer>

#include <utility>

namespace brindlecam {

LinuxLoginItem::LinuxLoginItem()
    : LinuxLoginItem(AutostartEntry::standardPlaces(), WorkPool::run)
{
}

LinuxLoginItem::LinuxLoginItem(AutostartEntry::Places places, Executor executor)
    : m_places(std::move(places))
    , m_background(std::move(executor))
{
}

void LinuxLoginItem::ask(QObject* context, Known known)
{
    m_background.run([places = m_places] { return AutostartEntry(places).isEnabled(); },
                     [context = QPointer(context), known = std::move(known)](bool enabled) {
                         if (context)
                             known(enabled);
                     });
}

void LinuxLoginItem::set(bool enabled, QObject* context, Done done)
{
    m_background.run(
        [places = m_places, enabled] {
            const AutostartEntry entry(places);
            return enabled ? entry.enable() : entry.disable();
        },
        [context = QPointer(context), done = std::move(done),
         path = AutostartEntry(m_places).path(), enabled](bool changed) {
            if (!context)
                return;
            const QString failed =
                enabled ? text("No se pudo escribir “%1”.") : text("No se pudo quitar “%1”.");
            done(changed ? std::nullopt : std::optional(Error{failed.arg(path)}));
        });
}

} // namespace brindlecam
