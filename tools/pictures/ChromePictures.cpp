#include "ChromePictures.h"

#include "Photographer.h"
#include "long/SessionChrome.h"
#include "look/PanelButton.h"
#include "notices/Activity.h"
#include "platform/Platform.h"
#include "preferences/Config.h"

#include <QApplication>
#include <QHelpEvent>

namespace brindlecam::pictures {

namespace {

const QColor kRecordingRed = QColor::fromRgbF(0.93F, 0.26F, 0.24F);

struct Place {
    const char* name;
    QRectF captured; ///< points of the screen
};

constexpr Place kPlaces[] = {
    {"below", {320, 200, 640, 360}},  {"above", {320, 380, 640, 400}},
    {"inside", {0, 0, 1280, 800}},    {"left", {12, 160, 200, 300}},
    {"right", {1060, 160, 200, 300}},
};

SessionChrome::Session scrolling(Photographer& photographer, const QRectF& captured)
{
    const ScreenInfo screen = photographer.screen();
    return {.captured = screen.toNative(captured),
            .screen = screen,
            .status = QStringLiteral(
                "Desplázate hacia abajo con calma  ·  Enter = listo  ·  Esc = cancelar"),
            .doneTitle = QStringLiteral("Listo"),
            .color = Config::leafGreen,
            .onDone = {},
            .onCancel = {}};
}

SessionChrome::Session recording(Photographer& photographer, const QRectF& captured)
{
    SessionChrome::Session session = scrolling(photographer, captured);
    session.status = QStringLiteral("● Grabando 0:00  ·  Enter = terminar  ·  Esc = cancelar");
    session.doneTitle = QStringLiteral("Terminar");
    session.color = kRecordingRed;
    return session;
}

PanelButton* buttonOf(const QString& title)
{
    for (QWidget* widget : QApplication::allWidgets()) {
        auto* button = qobject_cast<PanelButton*>(widget);
        if (button && button->isVisible() && button->text() == title)
            return button;
    }
    qFatal("no button %s", qPrintable(title));
}

void takeButtons(Photographer& photographer)
{
    PanelButton& button = *buttonOf(QStringLiteral("Terminar"));
    button.setAttribute(Qt::WA_UnderMouse);
    button.update();
    photographer.take(QStringLiteral("chrome-hovered"));
    button.setDown(true);
    photographer.take(QStringLiteral("chrome-pressed"));
    button.setDown(false);
    const QPoint at = button.rect().center();
    QHelpEvent rest(QEvent::ToolTip, at, button.mapToGlobal(at));
    QCoreApplication::sendEvent(&button, &rest);
    photographer.take(QStringLiteral("chrome-tip"));
}

} // namespace

void takeChromePictures(Photographer& photographer)
{
    const Activity activity;
    SessionChrome chrome(photographer.platform(), activity);
    for (const Place& place : kPlaces) {
        chrome.show(scrolling(photographer, place.captured));
        photographer.take(QStringLiteral("chrome-") + QLatin1String(place.name));
    }
    const QRectF captured = kPlaces[0].captured;
    chrome.show(scrolling(photographer, captured));
    chrome.setText(
        QStringLiteral("Capturando… 12345 px de alto  ·  Enter = listo  ·  Esc = cancelar"));
    photographer.take(QStringLiteral("chrome-counting"));
    chrome.setText(QStringLiteral("Muy rápido: regresa un poco y baja más despacio"));
    photographer.take(QStringLiteral("chrome-toofast"));
    chrome.show(recording(photographer, captured));
    photographer.take(QStringLiteral("chrome-recording"));
    takeButtons(photographer);
    chrome.close();
    photographer.rest();
}

} // namespace brindlecam::pictures
