#include "pins/PinnedCaptures.h"

#include "base/FreedMemory.h"
#include "base/Text.h"
#include "notices/Activity.h"
#include "notices/Toast.h"
#include "pins/PinDelivery.h"
#include "pins/PinnedCapture.h"
#include "platform/Displays.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace brindlecam {

PinnedCaptures::PinnedCaptures(const PinPorts& ports, Toast& toast, const Activity& activity,
                               PinDelivery& delivery)
    : m_ports(ports)
    , m_toast(toast)
    , m_activity(activity)
    , m_delivery(delivery)
    , m_tip({ports.panels, ports.displays, ports.compositing}, activity)
{
    m_ports.displays.whenChanged(&m_context, [this] { stayReachable(); });
}

PinnedCaptures::~PinnedCaptures() = default;

void PinnedCaptures::pin(const Rendered& picture, const QRect& native)
{
    if (picture.image().isNull() || native.isEmpty())
        return;
    // Of its own: a part of the frozen screen would hold all of that as long as the pin stands.
    const Rendered own(picture.image().copy(), picture.pointSize());
    auto& pin = *m_open.emplace_back(std::make_unique<PinnedCapture>(own, m_ports));
    // Pictures of some hundred kilobytes lay among everything else.
    QObject::connect(&pin, &QObject::destroyed, &m_context, [] { giveFreedMemoryBack(); });
    pin.onCopy = [this, &pin] { copy(pin); };
    pin.onSave = [this, &pin] { save(pin); };
    pin.onDismiss = [this, &pin] { dismiss(pin); };
    m_tip.serve(pin, [&pin](QPointF place) { return pin.onDesktop(place); });
    pin.open(native);
}

void PinnedCaptures::copy(PinnedCapture& pin)
{
    if (m_activity.quitting())
        return;
    const auto tell = [&toast = m_toast,
                       shown = QPointer<PinnedCapture>(&pin)](const QString& message) {
        toast.show(message, shown ? shown->onScreen() : std::nullopt);
    };
    m_delivery.copyPinned(pin.rendered(), [tell](ClipboardFate fate) {
        switch (fate) {
        case ClipboardFate::taken:
            return tell(text("Copiado al portapapeles"));
        case ClipboardFate::refused:
            return tell(text("No se pudo copiar la captura"));
        case ClipboardFate::overtaken:
            return; // the newer copy's own answer is what is told
        }
    });
}

void PinnedCaptures::save(const PinnedCapture& pin)
{
    if (!m_activity.quitting())
        m_delivery.savePinned(pin.rendered());
}

void PinnedCaptures::dismiss(const PinnedCapture& pin)
{
    const auto found = std::ranges::find_if(
        m_open, [&pin](const auto& candidate) { return candidate.get() == &pin; });
    if (found == m_open.end())
        return;
    // Later: it is the pin itself, or its menu, that asks for this.
    found->release()->deleteLater();
    m_open.erase(found);
}

void PinnedCaptures::stayReachable()
{
    for (const auto& pin : m_open)
        pin->stayReachable();
}

} // namespace brindlecam
