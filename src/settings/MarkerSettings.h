#pragma once

#include <QWidget>

class QLabel;
class QSlider;

namespace brindlecam {

class MarkerPreview;
class Prefs;

/// How translucent new marker strokes are. Main thread.
class MarkerSettings final : public QWidget {
    Q_OBJECT

public:
    /// The settings outlive it.
    explicit MarkerSettings(Prefs& prefs);

    /// Shows what is stored, which is a step of the slider from then on.
    void refresh();

    [[nodiscard]] QSlider& opacitySlider() { return *m_opacitySlider; } ///< per cent
    [[nodiscard]] QLabel& opacityLabel() { return *m_opacityLabel; }
    [[nodiscard]] MarkerPreview& markerPreview() { return *m_markerPreview; }

private:
    void opacityChanged();

    Prefs& m_prefs;
    QSlider* m_opacitySlider;
    QLabel* m_opacityLabel;
    MarkerPreview* m_markerPreview;
};

} // namespace brindlecam
