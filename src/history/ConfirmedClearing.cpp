#include "history/ConfirmedClearing.h"

#include "base/Text.h"
#include "history/History.h"
#include "notices/Alerts.h"

#include <utility>

namespace brindlecam {

ConfirmedClearing::ConfirmedClearing(const History& history, Alerts& alerts, Executor executor)
    : m_history(history)
    , m_alerts(alerts)
    , m_background(std::move(executor))
{
}

void ConfirmedClearing::confirmAndClear(std::function<void(bool cleared)> done)
{
    m_background.run([folders = m_history.folders()] { return History(folders).items().size(); },
                     [this, done = std::move(done)](qsizetype count) {
                         if (count == 0)
                             done(false);
                         else
                             ask(count, done);
                     });
}

void ConfirmedClearing::ask(qsizetype count, const std::function<void(bool)>& done)
{
    m_alerts.show(
        {.message = text("¿Vaciar las %1 capturas recientes?").arg(count),
         .informative = text("Se borran definitivamente las copias internas del cajón. No afecta a "
                             "los archivos de tu carpeta de capturas ni a lo que ya pegaste."),
         .buttons = {text("Vaciar"), text("Cancelar")}},
        [this, done](std::optional<int> chosen) {
            constexpr int kClear = 0;
            if (chosen != kClear) {
                done(false);
                return;
            }
            m_background.run([folders = m_history.folders()] { History(folders).clear(); },
                             [done] { done(true); });
        });
}

} // namespace brindlecam
