#include "canvas/OverlayWindow.h"

#include "canvas/CanvasView.h"
#include "canvas/DimmedFrame.h"
#include "platform/Grabber.h"
#include "platform/Panels.h"

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
    m_panels.assume(*this, PanelRole::overlay, screen.native);
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
    m_panels.putAway(*this);
    // The canvas may be the one that is reporting its outcome right now.
    if (m_canvas) {
        m_canvas->hide();
        m_canvas->deleteLater();
        m_canvas = nullptr;
    }
}

void OverlayWindow::resizeEvent(QResizeEvent*)
{
    if (m_canvas)
        m_canvas->setGeometry(rect());
}

} // namespace brindlecam
