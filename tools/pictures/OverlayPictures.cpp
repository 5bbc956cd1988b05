#include "OverlayPictures.h"

#include "Hand.h"
#include "Photographer.h"
#include "Session.h"
#include "canvas/CanvasView.h"

namespace brindlecam::pictures {

namespace {

struct Scene {
    const char* name;
    void (*act)(Hand& hand, QSizeF canvas);
};

constexpr Scene kScenes[] = {
    {"hint", [](Hand&, QSizeF) {}},
    {"hovered-window",
     [](Hand& hand, QSizeF canvas) {
         hand.move({canvas.width() * 0.3, canvas.height() * 0.55});
     }},
    {"clicked-window",
     [](Hand& hand, QSizeF canvas) {
         hand.press({canvas.width() * 0.3, canvas.height() * 0.55});
         hand.release();
     }},
    {"dragging",
     [](Hand& hand, QSizeF canvas) {
         hand.drag({canvas.width() * 0.2, canvas.height() * 0.3},
                   {canvas.width() * 0.6, canvas.height() * 0.7});
     }},
    {"selection",
     [](Hand& hand, QSizeF canvas) {
         hand.drag({canvas.width() * 0.2, canvas.height() * 0.3},
                   {canvas.width() * 0.6, canvas.height() * 0.7});
         hand.release();
     }},
    {"selection-odd-size",
     [](Hand& hand, QSizeF) {
         hand.drag({101, 203}, {334, 458});
         hand.release();
     }},
    {"selection-at-top",
     [](Hand& hand, QSizeF canvas) {
         hand.drag({canvas.width() * 0.3, 12}, {canvas.width() * 0.7, canvas.height() * 0.4});
         hand.release();
     }},
    {"selection-whole-screen",
     [](Hand& hand, QSizeF canvas) {
         hand.drag({0, 0}, {canvas.width(), canvas.height()});
         hand.release();
     }},
    {"loupe-top-left",
     [](Hand& hand, QSizeF) {
         hand.move({0, 0});
     }},
    {"loupe-top-right",
     [](Hand& hand, QSizeF canvas) {
         hand.move({canvas.width() - 1, 0});
     }},
    {"loupe-bottom-left",
     [](Hand& hand, QSizeF canvas) {
         hand.move({0, canvas.height() - 1});
     }},
    {"loupe-bottom-right",
     [](Hand& hand, QSizeF canvas) {
         hand.move({canvas.width() - 1, canvas.height() - 1});
     }},
    {"loupe-inside",
     [](Hand& hand, QSizeF canvas) {
         hand.move({canvas.width() * 0.62, canvas.height() * 0.4});
     }},
};

} // namespace

void takeOverlayPictures(Photographer& photographer, Prefs& prefs)
{
    for (const Scene& scene : kScenes) {
        {
            Session session(photographer, prefs);
            Hand hand(session.canvas());
            scene.act(hand, photographer.screen().size());
            photographer.take(QStringLiteral("overlay-") + QLatin1String(scene.name));
        }
        photographer.rest(); // without the overlay
    }
}

} // namespace brindlecam::pictures
