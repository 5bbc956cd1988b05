#pragma once

#include <QWidget>

namespace brindlecam {

/// A line of text with a marker stroke over it, as the marker covers what it is drawn on. Main
/// thread; points.
class MarkerPreview final : public QWidget {
    Q_OBJECT

public:
    explicit MarkerPreview(QWidget* parent = nullptr);

    /// 0.1 … 1.
    [[nodiscard]] double opacity() const { return m_opacity; }
    void setOpacity(double opacity);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double m_opacity = 1;
};

} // namespace brindlecam
