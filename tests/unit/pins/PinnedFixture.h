#pragma once

#include "notices/Activity.h"
#include "notices/Toast.h"
#include "pins/PinDelivery.h"
#include "pins/PinnedCapture.h"
#include "pins/PinnedCaptures.h"
#include "pins/PinnedView.h"
#include "support/FakeCompositing.h"
#include "support/FakeDisplays.h"
#include "support/FakePanels.h"
#include "support/FakePins.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QWheelEvent>

namespace brindlecam::test {

inline const ScreenInfo kPinnedScreen{QStringLiteral("A"), QRect(0, 0, 1920, 1080), 1,
                                      QRect(0, 0, 1920, 1080)};
inline const ScreenInfo kPinnedDenseScreen{QStringLiteral("B"), QRect(1920, 0, 2880, 1800), 2,
                                           QRect(1920, 0, 2880, 1800)};
inline constexpr QRect kPinned(500, 400, 200, 100);

/// Notes which pictures it was given.
class NotedDelivery final : public PinDelivery {
public:
    std::vector<Rendered> copied;
    std::vector<Rendered> saved;
    std::function<void(ClipboardFate)> copyDone;

    void copyPinned(const Rendered& picture, std::function<void(ClipboardFate)> done) override
    {
        copied.push_back(picture);
        copyDone = std::move(done);
    }
    void savePinned(const Rendered& picture) override { saved.push_back(picture); }
};

/// The owner of the pins with what it works with, and hands on its newest pin.
struct PinnedFixture {
    PinnedFixture() { displays.all = {kPinnedScreen}; }

    PinnedCapture& open(const QRect& native = kPinned, QSizeF points = {})
    {
        QImage image(native.size(), QImage::Format_RGB32);
        image.fill(Qt::red);
        pins.pin(Rendered(image, points.isEmpty() ? QSizeF(native.size()) : points), native);
        return *pins.open().back();
    }
    [[nodiscard]] PinnedCapture& pin() const { return *pins.open().back(); }
    [[nodiscard]] PinnedView& view() const { return *pin().findChild<PinnedView*>(); }
    [[nodiscard]] FakePins::Pin& window() const { return windows.of(pin()); }
    [[nodiscard]] QRect place() const { return window().places.back().native; }

    /// `time` is that of the server, in milliseconds.
    void mouse(QEvent::Type type, QPoint global, Qt::MouseButton button = Qt::LeftButton,
               quint64 time = 0) const
    {
        const bool down = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, QPointF(global - place().topLeft()), QPointF(global),
                          type == QEvent::MouseMove ? Qt::NoButton : button,
                          down ? button : Qt::NoButton, Qt::NoModifier);
        event.setTimestamp(time);
        QCoreApplication::sendEvent(&view(), &event);
    }
    void wheel(int notches) const { wheel(QPoint(), {0, notches * 120}, nullptr); }
    void wheel(QPoint pixels, QPoint angle, const QPointingDevice* device) const
    {
        QWheelEvent event({}, {}, pixels, angle, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false, Qt::MouseEventNotSynthesized,
                          device ? device : QPointingDevice::primaryPointingDevice());
        QCoreApplication::sendEvent(&view(), &event);
    }
    [[nodiscard]] QImage look() const
    {
        QImage image(place().size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        view().render(&image, {}, {}, QWidget::RenderFlags());
        return image.convertToFormat(QImage::Format_ARGB32);
    }

    FakePanels panels;
    FakePins windows;
    FakeCompositing compositing;
    FakeDisplays displays;
    Toast toast{displays, panels, compositing};
    Activity activity;
    NotedDelivery delivery;
    PinnedCaptures pins{{panels, windows, displays, compositing}, toast, activity, delivery};
};

} // namespace brindlecam::test
