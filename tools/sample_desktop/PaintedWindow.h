#pragma once

#include <QList>
#include <QRect>
#include <QWidget>

#include <functional>

namespace brindlecam::sample {

/// Paints a scene of `size` points.
using Scene = std::function<void(QPainter& painter, QSize size)>;

/// A frameless window that shows one painted scene, with the shadows of the windows above it:
/// nothing on this desktop blends windows together.
class PaintedWindow final : public QWidget {
public:
    PaintedWindow(const QRect& place, Scene scene);

    /// Once, when it is painted for the first time.
    std::function<void()> onPainted;

    /// Another window will lie over this one.
    void coverWith(const PaintedWindow& other);

    /// Tells the desktop what this window is (one of Qt's WA_X11NetWmWindowType… attributes).
    void setKind(Qt::WidgetAttribute kind);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Scene m_scene;
    QList<QRect> m_above; ///< in this window's points
};

} // namespace brindlecam::sample
