#pragma once

#include "base/Listeners.h"
#include "platform/Panels.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace brindlecam::test {

/// Records what becomes of the panels and shows them offscreen.
class FakePanels final : public Panels {
public:
    struct Shown {
        QPointer<QWidget> widget;
        QRect native;
    };

    bool blends = true;            ///< what translucent() answers
    QColor beneath = Qt::white;    ///< what backdrop() is filled with
    std::vector<PanelRole> roles;  ///< in the order they were assumed
    std::vector<Shown> shown;      ///< in the order they were shown
    std::vector<double> opacities; ///< in the order they were set
    std::vector<QPointer<QWidget>> focused;
    std::map<const QWidget*, QRegion> shapes; ///< as they are now
    std::function<void()> onSwallow;          ///< a session ends
    std::function<void(PanelRole)> onAssume;  ///< a panel is made

    void assume(QWidget&, PanelRole role) override
    {
        roles.push_back(role);
        if (onAssume)
            onAssume(role);
    }
    void show(QWidget& widget, const QRect& native) override
    {
        shown.push_back({&widget, native});
        m_places[&widget] = native;
        if (!native.isEmpty())
            widget.setGeometry(QRect(QPoint(), native.size()));
        widget.show();
    }
    void showAtOnce(QWidget& widget, const QRect& native, const FirstFrame&,
                    std::function<void()> mayPaint) override
    {
        show(widget, native);
        mayPaint();
    }
    void place(QWidget& widget, const QRect& native) override
    {
        m_places[&widget] = native;
        widget.resize(native.size());
    }
    [[nodiscard]] QRect nativeRect(const QWidget& widget) const override
    {
        const auto found = m_places.find(&widget);
        return found == m_places.end() ? QRect() : found->second;
    }
    void setShape(QWidget& widget, const QRegion& pixels) override { shapes[&widget] = pixels; }
    void focus(QWidget& widget) override { focused.push_back(&widget); }
    void swallowDoubleClick() override
    {
        if (onSwallow)
            onSwallow();
    }
    [[nodiscard]] bool translucent() const override { return blends; }
    [[nodiscard]] bool translucent(const QWidget&) const override { return blends; }
    void whenBlendingChanges(QObject* context, std::function<void()> changed) override
    {
        m_listeners.add(context, std::move(changed));
    }
    void changeBlending() { m_listeners.tell(); }
    [[nodiscard]] QImage backdrop(const QRect& native) override
    {
        QImage image(native.size(), QImage::Format_RGB32);
        image.fill(beneath);
        return image;
    }
    void setOpacity(QWidget&, double opacity) override { opacities.push_back(opacity); }

    /// How many of the panels ever shown are visible now.
    [[nodiscard]] int visibleNow() const
    {
        std::set<const QWidget*> visible;
        for (const Shown& panel : shown) {
            if (panel.widget && panel.widget->isVisible())
                visible.insert(panel.widget);
        }
        return static_cast<int>(visible.size());
    }

private:
    std::map<const QWidget*, QRect> m_places;
    Listeners m_listeners; ///< of `blends`
};

} // namespace brindlecam::test
