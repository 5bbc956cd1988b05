#include "settings/MarkerSettings.h"

#include "base/Text.h"
#include "look/InterfaceFont.h"
#include "look/TextLine.h"
#include "preferences/Prefs.h"
#include "settings/MarkerPreview.h"
#include "settings/SettingsLook.h"
#include "settings/WrappedText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

#include <cmath>

namespace brindlecam {

namespace {

// Per cent.
constexpr int kLeastOpacity = 10;
constexpr int kMostOpacity = 100;
constexpr int kOpacityStep = 5;
constexpr int kWhole = 100;
// Points.
constexpr int kSliderWidth = 240;
constexpr int kOpacitySize = 13;

/// Does not jump while it counts.
class EvenDigits final : public QLabel {
protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::WindowText));
        const TextLine line{.text = text(), .font = font(), .evenDigits = true};
        line.draw(painter, {0, (height() - line.height()) / 2 + line.ascent()});
    }
};

} // namespace

MarkerSettings::MarkerSettings(Prefs& prefs)
    : m_prefs(prefs)
    , m_opacitySlider(new QSlider(Qt::Horizontal))
    , m_opacityLabel(new EvenDigits)
    , m_markerPreview(new MarkerPreview)
{
    const QFont font = InterfaceFont::regular(kOpacitySize);
    auto* title = new QLabel(text("Opacidad:"));
    title->setFont(font);
    m_opacitySlider->setRange(kLeastOpacity, kMostOpacity);
    m_opacitySlider->setSingleStep(kOpacityStep);
    m_opacitySlider->setPageStep(2 * kOpacityStep);
    m_opacitySlider->setFixedWidth(kSliderWidth);
    m_opacitySlider->setAccessibleName(text("Opacidad del marcador"));
    m_opacitySlider->setToolTip(text("Opacidad de los trazos nuevos del marcador"));
    m_opacityLabel->setFont(font);
    // As wide as it ever gets: it counts while the knob moves.
    const TextLine widest{.text = text("%1 %").arg(kMostOpacity), .font = font, .evenDigits = true};
    m_opacityLabel->setMinimumWidth(static_cast<int>(std::ceil(widest.width())));
    connect(m_opacitySlider, &QSlider::valueChanged, this, [this] { opacityChanged(); });

    auto* row = new QHBoxLayout;
    row->setSpacing(SettingsLook::kSpacing);
    row->addWidget(title);
    row->addWidget(m_opacitySlider);
    row->addWidget(m_opacityLabel);
    row->addStretch();
    QVBoxLayout* column = SettingsLook::column(this);
    column->addWidget(SettingsLook::header(text("Marcador")));
    column->addLayout(row);
    column->addWidget(m_markerPreview);
    column->addWidget(
        SettingsLook::help(text("Se aplica a los trazos nuevos. Durante una captura también puedes "
                                "cambiarla desde el panel de color (− ──●── +).")));
}

void MarkerSettings::refresh()
{
    const QSignalBlocker onceIsEnough(m_opacitySlider);
    m_opacitySlider->setValue(static_cast<int>(std::lround(m_prefs.markerOpacity() * kWhole)));
    opacityChanged();
}

void MarkerSettings::opacityChanged()
{
    const double steps = static_cast<double>(m_opacitySlider->value()) / kOpacityStep;
    const int percent = static_cast<int>(std::round(steps)) * kOpacityStep;
    const double opacity = static_cast<double>(percent) / kWhole;
    if (opacity != m_prefs.markerOpacity())
        m_prefs.setMarkerOpacity(opacity);
    m_opacityLabel->setText(text("%1 %").arg(percent));
    m_markerPreview->setOpacity(m_prefs.markerOpacity());
}

} // namespace brindlecam
