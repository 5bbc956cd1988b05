#pragma once

#include <QAbstractButton>
#include <QColor>

#include <functional>
#include <optional>

namespace brindlecam {

/// A button of a bar: a white symbol or a swatch of colour, green while it is on. A click never
/// takes the keyboard focus; Tab does, then Space presses, and all other keys go to the canvas.
/// Main thread; 30 × 30 points.
class BarButton final : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(bool isOn READ isOn WRITE setOn)

public:
    static constexpr int kSide = 30; ///< points

    /// `symbol` may be empty for a button that shows a swatch. The tooltip is also its name for
    /// assistive technology.
    BarButton(QString symbol, const QString& tooltip, QWidget* parent = nullptr);

    std::function<void()> onClick;

    [[nodiscard]] bool isOn() const { return isChecked(); }
    /// A press doesn't change it. From the first call on, assistive technology is told of it.
    void setOn(bool on);

    /// Shows a disc of this colour in a square of `diameter` points, instead of a symbol.
    void setSwatch(const QColor& color, qreal diameter);
    [[nodiscard]] std::optional<QColor> swatch() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void nextCheckState() override {}

private:
    struct Swatch {
        QColor color;
        qreal diameter = 0;
    };

    void paintBackground(QPainter& painter) const;
    void paintSymbol(QPainter& painter) const;
    void paintSwatch(QPainter& painter, const Swatch& swatch) const;

    const QString m_symbol;
    std::optional<Swatch> m_swatch;
};

} // namespace brindlecam
