#include "drawer/DrawerSlide.h"

#include "drawer/DrawerPanel.h"
#include "platform/Panels.h"

#include <QEasingCurve>

#include <algorithm>
#include <utility>

namespace brindlecam {

namespace {

constexpr int kInMilliseconds = 220;
constexpr int kOutMilliseconds = 160;
/// So far it has come in its first frame: there is something to be seen at once.
constexpr int kFirstFrame = 16;
constexpr QEasingCurve::Type kEasing = QEasingCurve::OutCubic;

double firstProgress()
{
    return QEasingCurve(kEasing).valueForProgress(double(kFirstFrame) / kInMilliseconds);
}

/// `progress` of the way from one place to another of the same size.
QRect between(const QRect& from, const QRect& to, double progress)
{
    const QPointF way = QPointF(to.topLeft() - from.topLeft()) * progress;
    return from.translated(way.toPoint());
}

} // namespace

DrawerSlide::DrawerSlide(Panels& panels)
    : m_panels(panels)
{
    m_in.setDuration(kInMilliseconds);
    m_in.setEasingCurve(kEasing);
    m_in.setStartValue(0.0);
    m_in.setEndValue(1.0);
}

DrawerSlide::~DrawerSlide() = default;

QRect DrawerSlide::firstPlace(const DrawerGeometry::Places& places)
{
    return places.slides ? between(places.below, places.open, firstProgress()) : places.open;
}

void DrawerSlide::in(DrawerPanel& panel, const DrawerGeometry::Places& places)
{
    m_in.stop();
    m_in.disconnect(this);
    if (!places.slides)
        (void)m_panels.fade(panel, firstProgress());
    m_panels.show(panel, firstPlace(places));
    m_in.start();
    m_in.setCurrentTime(kFirstFrame);
    connect(&m_in, &QVariantAnimation::valueChanged, this, [this, &panel, places] {
        const double progress = m_in.currentValue().toDouble();
        if (places.slides)
            m_panels.place(panel, between(places.below, places.open, progress));
        else
            (void)m_panels.fade(panel, progress);
    });
}

void DrawerSlide::out(std::unique_ptr<DrawerPanel> panel, const DrawerGeometry::Places& places)
{
    panel->retire();
    const double reached =
        m_in.state() == QAbstractAnimation::Running ? m_in.currentValue().toDouble() : 1.0;
    m_in.stop();
    const QRect from = places.slides ? between(places.below, places.open, reached) : places.open;
    const double strength = places.slides ? 1.0 : reached;
    const QRect to = from.translated(places.below.topLeft() - places.open.topLeft());
    auto* const animation = new QVariantAnimation(this);
    animation->setDuration(kOutMilliseconds);
    animation->setStartValue(0.0);
    animation->setEndValue(1.0);
    DrawerPanel* const leaving = panel.get();
    m_leaving.push_back({std::move(panel), animation});
    connect(animation, &QVariantAnimation::valueChanged, this,
            [this, leaving, animation, from, to, strength, places] {
                const double progress = animation->currentValue().toDouble();
                if (places.slides)
                    m_panels.place(*leaving, between(from, to, progress));
                (void)m_panels.fade(*leaving, strength * (1 - progress));
            });
    connect(animation, &QVariantAnimation::finished, this, [this, animation] { left(animation); });
    animation->start();
}

void DrawerSlide::left(const QVariantAnimation* animation)
{
    const auto found = std::ranges::find(m_leaving, animation, &Leaving::animation);
    if (found == m_leaving.end())
        return;
    found->animation->deleteLater();
    discard(std::move(found->panel));
    m_leaving.erase(found);
}

bool DrawerSlide::cutShort()
{
    m_in.stop();
    auto leaving = std::exchange(m_leaving, {});
    for (Leaving& gone : leaving) {
        gone.animation->disconnect(this);
        gone.animation->deleteLater();
        discard(std::move(gone.panel));
    }
    return !leaving.empty();
}

void DrawerSlide::setDragging(bool dragging)
{
    m_dragging = dragging;
    if (dragging)
        return;
    // Later: it may be one of their tiles that says so.
    for (auto& panel : std::exchange(m_kept, {}))
        panel.release()->deleteLater();
}

void DrawerSlide::discard(std::unique_ptr<DrawerPanel> panel)
{
    panel->retire();
    panel->hide();
    if (m_dragging)
        m_kept.push_back(std::move(panel));
}

} // namespace brindlecam
