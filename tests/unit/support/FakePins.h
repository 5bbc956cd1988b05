#pragma once

#include "platform/Pins.h"

#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace brindlecam::test {

/// Records where pins are put and shows them offscreen.
class FakePins final : public Pins {
public:
    struct Pin {
        QPointer<QWidget> widget;
        qreal radius = 0;
        std::function<void()> changed;
        std::vector<PinPlace> places; ///< in the order they were asked for
        int grips = 0;                ///< hands that took it
        bool held = false;            ///< by one of them
    };

    bool blends = true;                     ///< what each pin's blends() answers
    std::vector<std::shared_ptr<Pin>> made; ///< in the order they were made

    [[nodiscard]] std::unique_ptr<PinSurface> make(QWidget& widget, qreal radius,
                                                   std::function<void()> changed) override
    {
        made.push_back(
            std::make_shared<Pin>(Pin{&widget, radius, std::move(changed), {}, 0, false}));
        return std::make_unique<Surface>(*this, made.back());
    }

    [[nodiscard]] Pin& of(const QWidget& widget) const
    {
        for (const auto& pin : made) {
            if (pin->widget == &widget)
                return *pin;
        }
        Q_UNREACHABLE();
    }
    /// A compositor has come or gone.
    void change(bool blending)
    {
        blends = blending;
        for (const auto& pin : made) {
            if (pin->widget)
                pin->changed();
        }
    }

private:
    class Surface final : public PinSurface {
    public:
        Surface(const FakePins& pins, std::shared_ptr<Pin> pin)
            : m_pins(pins)
            , m_pin(std::move(pin))
        {
        }

        void show(const PinPlace& place) override
        {
            this->place(place);
            m_pin->widget->show();
        }
        void place(const PinPlace& place) override
        {
            m_pin->places.push_back(place);
            m_pin->widget->resize(place.native.size());
        }
        [[nodiscard]] QRect rect() override
        {
            return m_pin->places.empty() ? QRect() : m_pin->places.back().native;
        }
        [[nodiscard]] QSize pixels() const override { return m_pin->widget->size(); }
        [[nodiscard]] bool blends() const override { return m_pins.blends; }
        [[nodiscard]] QPoint onDesktop(QPointF place) override
        {
            return rect().topLeft() + place.toPoint();
        }
        void grip() override
        {
            ++m_pin->grips;
            m_pin->held = true;
        }
        [[nodiscard]] QPoint hand(const QMouseEvent& event) override
        {
            return event.globalPosition().toPoint();
        }
        void letGo() override { m_pin->held = false; }

    private:
        const FakePins& m_pins;
        const std::shared_ptr<Pin> m_pin;
    };
};

} // namespace brindlecam::test
