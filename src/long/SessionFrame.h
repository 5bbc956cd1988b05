#pragma once

#include <QColor>
#include <QRect>
#include <QWidget>

#include <vector>

namespace brindlecam {

class Panels;

/// The dashed line around what a long capture captures. It lies above the windows, takes neither
/// mouse nor keyboard, and has no pixels but those of its strokes, so that none is in a picture of
/// what it surrounds. Main thread; borrows the port.
class SessionFrame final : public QWidget {
    Q_OBJECT

public:
    /// `native` is where its window is, around `captured` (pixels of the global desktop).
    SessionFrame(Panels& panels, const QRect& native, const QRect& captured, qreal scale,
                 const QColor& color);

    void appear();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Panels& m_panels;
    const QRect m_native;
    const std::vector<QRect> m_strokes; ///< pixels of the window
    const QColor m_color;
};

} // namespace brindlecam
