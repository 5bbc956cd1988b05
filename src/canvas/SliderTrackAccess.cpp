#include "canvas/SliderTrackAccess.h"

#include "canvas/SliderTrack.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace brindlecam::SliderTrackAccess {

namespace {

class AccessibleTrack final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleTrack(SliderTrack& track)
        : QAccessibleWidget(&track, QAccessible::Slider)
        , m_track(track)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QVariant currentValue() const override { return m_track.value(); }
    void setCurrentValue(const QVariant& value) override { m_track.choose(value.toDouble()); }
    [[nodiscard]] QVariant maximumValue() const override { return m_track.range().upper; }
    [[nodiscard]] QVariant minimumValue() const override { return m_track.range().lower; }
    [[nodiscard]] QVariant minimumStepSize() const override { return m_track.range().step; }

private:
    SliderTrack& m_track;
};

QAccessibleInterface* made(const QString&, QObject* object)
{
    auto* track = qobject_cast<SliderTrack*>(object);
    return track ? new AccessibleTrack(*track) : nullptr;
}

} // namespace

void install()
{
    QAccessible::installFactory(made);
}

void announce(SliderTrack& track)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent event(&track, track.value());
    QAccessible::updateAccessibility(&event);
}

} // namespace brindlecam::SliderTrackAccess
