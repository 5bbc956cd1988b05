#pragma once

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

    struct Menu {
        QPointer<QWidget> over;
        QPoint place;
        std::vector<MenuEntry> entries;
    };

    bool fades = true;             ///< what fade() answers
    std::vector<PanelRole> roles;  ///< in the order they were assumed
    std::vector<Shown> shown;      ///< in the order they were shown
    std::vector<double> strengths; ///< in the order they were asked for
    std::vector<QPointer<QWidget>> focused;
    std::map<const QWidget*, QRegion> cuts;  ///< the last one of each
    std::vector<Menu> menus;                 ///< in the order they were opened
    std::function<void()> onSwallow;         ///< a session ends
    std::function<void(PanelRole)> onAssume; ///< a panel is made

    void assume(QWidget& widget, PanelRole role, const QRect& native) override
    {
        roles.push_back(role);
        if (!native.isEmpty())
            widget.setGeometry(QRect(QPoint(), native.size()));
        if (onAssume)
            onAssume(role);
    }
    void show(QWidget& widget, const QRect& native) override
    {
        shown.push_back({&widget, native});
        if (!native.isEmpty())
            widget.setGeometry(QRect(QPoint(), native.size()));
        widget.show();
    }
    void showAtOnce(QWidget& widget, const QRect& native, const FirstFrame&,
                    std::function<void()> mayPaint) override
    {
        show(widget, native);
        QMetaObject::invokeMethod(&widget, std::move(mayPaint), Qt::QueuedConnection);
    }
    void putAway(QWidget& widget) override { widget.hide(); }
    void place(QWidget& widget, const QRect& native) override { widget.resize(native.size()); }
    void cut(QWidget& widget, const QRegion& pixels) override { cuts[&widget] = pixels; }
    void focus(QWidget& widget) override { focused.push_back(&widget); }
    void swallowDoubleClick() override
    {
        if (onSwallow)
            onSwallow();
    }
    void popUp(QWidget& over, QPoint place, std::vector<MenuEntry> entries) override
    {
        menus.push_back({&over, place, std::move(entries)});
    }
    [[nodiscard]] bool fade(QWidget&, double strength) override
    {
        strengths.push_back(strength);
        return fades;
    }

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
};

} // namespace brindlecam::test
