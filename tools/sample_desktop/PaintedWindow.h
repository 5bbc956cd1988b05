#pragma once

#include <QWidget>

#include <functional>

namespace brindlecam::sample {

/// Paints a scene of `size` points.
using Scene = std::function<void(QPainter& painter, QSize size)>;

/// A window that shows one painted scene.
class PaintedWindow final : public QWidget {
public:
    explicit PaintedWindow(Scene scene);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Scene m_scene;
};

} // namespace brindlecam::sample
