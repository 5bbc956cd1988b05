#include "OverlayPictures.h"

#include "Photographer.h"
#include "canvas/CanvasView.h"
#include "capture/OverlaySet.h"
#include "capture/ScreenGrabber.h"
#include "capture/WindowFinder.h"
#include "platform/Platform.h"

#include <QCoreApplication>
#include <QMouseEvent>

namespace brindlecam::pictures {

namespace {

/// A hand on one canvas; places in its points.
class Hand final {
public:
    explicit Hand(CanvasView& canvas)
        : m_canvas(canvas)
    {
    }

    void move(QPointF to)
    {
        m_at = to;
        send(QEvent::MouseMove, Qt::NoButton, m_down ? Qt::LeftButton : Qt::NoButton);
    }
    void press(QPointF at)
    {
        move(at);
        m_down = true;
        send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
    }
    void release()
    {
        m_down = false;
        send(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    }
    void drag(QPointF from, QPointF to)
    {
        press(from);
        move(to);
    }

private:
    void send(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        QMouseEvent event(type, m_at, m_canvas.mapToGlobal(m_at), button, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(&m_canvas, &event);
    }

    CanvasView& m_canvas;
    QPointF m_at;
    bool m_down = false;
};

/// One session per picture, as fresh as the controller's.
class Session final {
public:
    Session(Photographer& photographer, Prefs& prefs)
        : m_overlays(*photographer.platform().panels, prefs)
    {
        Platform& platform = photographer.platform();
        const auto screens = platform.displays->screens();
        const auto frames = WindowFinder::frontToBackRects(
            platform.windowList->frontToBack(), screens, QCoreApplication::applicationPid());
        ScreenGrabber::capture(*platform.grabber, screens, {.dimmedCopy = true},
                               [&](const Result<std::vector<Shot>>& shots) {
                                   if (!shots)
                                       qFatal("%s", qPrintable(shots.error().message));
                                   for (const Shot& shot : shots.value()) {
                                       OverlayWindow& window = m_overlays.fill(shot);
                                       window.canvas()->setWindowRects(
                                           WindowFinder::onScreen(frames, shot.screen));
                                       window.cover();
                                   }
                               });
        photographer.rest();
    }
    ~Session() { m_overlays.removeAll(); }

    [[nodiscard]] CanvasView& canvas() { return *m_overlays.session().front()->canvas(); }

private:
    OverlaySet m_overlays;
};

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
