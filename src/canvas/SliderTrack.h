#pragma once

#include <QColor>
#include <QWidget>

#include <functional>

namespace brindlecam {

/// A slider: a track with a knob that previews in the annotation colour what it sets. Jumps to
/// where it is pressed and follows the pointer; with the keyboard focus the arrows move it by a
/// step. Main thread; points.
class SliderTrack final : public QWidget {
    Q_OBJECT

public:
    enum class Shape : std::uint8_t {
        plain,  ///< previews an opacity
        tapered ///< grows thicker to the right, previews a stroke width
    };
    struct Range {
        double lower = 0;
        double upper = 1;
        double step = 1;
    };

    /// Starts at the lower end. The tooltip is also its name for assistive technology.
    SliderTrack(Shape shape, Range range, const QString& tooltip, QWidget* parent = nullptr);

    /// The user has chosen another value.
    std::function<void(double)> onChange;

    [[nodiscard]] double value() const { return m_value; }
    /// Clamped to the range; onChange is not called.
    void setValue(double value);
    /// As when the user chooses it: clamped, and onChange is called when it differs.
    void choose(double value);

    [[nodiscard]] const Range& range() const { return m_range; }

    /// The colour of the annotation that is to come.
    void setColor(const QColor& color);
    [[nodiscard]] const QColor& color() const { return m_color; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] double fraction() const;
    [[nodiscard]] qreal knobX() const;
    [[nodiscard]] double valueAt(qreal x) const;
    void paintTrack(QPainter& painter) const;
    void paintKnob(QPainter& painter) const;

    const Shape m_shape;
    const Range m_range;
    double m_value;
    QColor m_color = Qt::white;
    bool m_dragged = false;
};

} // namespace brindlecam
