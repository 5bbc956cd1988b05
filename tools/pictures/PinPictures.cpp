#include "PinPictures.h"

#include "Photographer.h"
#include "pins/PinnedCapture.h"
#include "pins/PinnedCaptures.h"
#include "pins/PinnedView.h"

#include <QCoreApplication>
#include <QEnterEvent>
#include <QHelpEvent>

namespace brindlecam::pictures {

namespace {

constexpr int kMostTurns = 30;

void zoomToTheLimit(PinnedCapture& pin, qreal factor)
{
    for (int turn = 0; turn < kMostTurns; ++turn)
        pin.zoomBy(factor);
}

} // namespace

void takePinPictures(Photographer& photographer, PinnedCaptures& pins)
{
    const ScreenInfo screen = photographer.screen();
    // Taken elsewhere than it is shown, so that it can be seen.
    const QRect taken = screen.toNative({130, 120, 380, 260});
    pins.pin(Rendered(photographer.look(taken), QSizeF(taken.size()) / screen.scale),
             screen.toNative({520, 300, 380, 260}));
    photographer.take(QStringLiteral("pin"));

    PinnedCapture& pin = *pins.open().front();
    QEnterEvent enter({}, {}, {});
    QCoreApplication::sendEvent(pin.findChild<PinnedView*>(), &enter);
    photographer.take(QStringLiteral("pin-hovered"));
    auto& view = *pin.findChild<PinnedView*>();
    const QPoint at = view.rect().center();
    QHelpEvent rest(QEvent::ToolTip, at, view.mapToGlobal(at));
    QCoreApplication::sendEvent(&view, &rest);
    photographer.take(QStringLiteral("pin-tip"));
    pins.hideTip();
    zoomToTheLimit(pin, 0.8);
    photographer.take(QStringLiteral("pin-smallest"));
    zoomToTheLimit(pin, 1.2);
    photographer.take(QStringLiteral("pin-largest"));
    pin.dismiss();
    photographer.rest();
}

} // namespace brindlecam::pictures
