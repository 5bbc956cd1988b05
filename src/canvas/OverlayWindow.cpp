#include "canvas/OverlayWindow.h"

#include "canvas/CanvasView.h"
#include "canvas/DimmedFrame.h"
#include "platform/Grabber.h"
#include "platform/Panels.h"

#include <QBackingStore>
#include <QGuiApplication>
#include <QScreen>

namespace brindlecam {

OverlayWindow::OverlayWindow(Panels& panels, Prefs& prefs, TextRecognizer& recognizer,
                             const ScreenInfo& screen)
    : m_panels(panels)
    , m_prefs(prefs)
    , m_recognizer(recognizer)
    , m_screen(screen)
    , m_hint(screen.size(), screen.scale)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setWindowTitle(QStringLiteral("Brindlecam"));
    for (QScreen* candidate : QGuiApplication::screens()) {
        if (candidate->name() == screen.id) {
            setScreen(candidate);
            setGeometry(candidate->geometry());
        }
    }
    m_panels.assume(*this, PanelRole::overlay);
}

CanvasView& OverlayWindow::makeContent(const GrabbedScreen& shot)
{
    delete m_canvas;
    m_canvas = new CanvasView(
        m_prefs, m_recognizer,
        {.image = shot.image, .size = m_screen.size(), .nativeOrigin = m_screen.native.topLeft()},
        this);
    m_canvas->setHintPicture(m_hint);
    m_canvas->setGeometry(rect());
    m_canvas->show();
    setFocusProxy(m_canvas);
    return *m_canvas;
}

void OverlayWindow::cover()
{
    m_panels.showAtOnce(*this, m_screen.native, DimmedFrame(m_canvas->image(), m_hint), [this] {
        if (m_canvas)
            m_canvas->paintAfterFirstFrame();
    });
}

void OverlayWindow::uncover()
{
    hide();
    // The canvas may be the one that is reporting its outcome right now.
    if (m_canvas) {
        m_canvas->hide();
        m_canvas->deleteLater();
        m_canvas = nullptr;
    }
    // What was painted goes back to the system.
    if (QBackingStore* store = backingStore())
        store->resize(QSize(1, 1));
}

void OverlayWindow::resizeEvent(QResizeEvent*)
{
    if (m_canvas)
        m_canvas->setGeometry(rect());
}

} // namespace brindlecam
