#pragma once

#include "canvas/BarButton.h"
#include "canvas/BarView.h"
#include "canvas/PaletteView.h"
#include "canvas/SliderTrack.h"
#include "canvas/Toolbar.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "support/TestCase.h"

#include <QTemporaryDir>

#include <algorithm>
#include <utility>

namespace brindlecam::test {

inline constexpr QRectF kBarsSelection(100, 50, 300, 420);
inline constexpr QSize kBarsCanvas(900, 600);

/// The canvas beneath the bars: takes the focus like the real one, and notes the keys it gets.
class BarsCanvas final : public QWidget {
public:
    std::vector<int> keys;

    BarsCanvas()
    {
        setFocusPolicy(Qt::TabFocus);
        resize(kBarsCanvas);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override { keys.push_back(event->key()); }
};

/// The bars over such a canvas, noting what they call.
struct ToolbarFixture {
    QTemporaryDir folder;
    Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
    Prefs prefs{defaults};
    BarsCanvas canvas;
    Toolbar bars{canvas, prefs};
    QStringList calls;

    ToolbarFixture()
    {
        bars.onPointer = [this] { calls << QStringLiteral("pointer"); };
        bars.onTool = [this](Tool tool) { calls << name(tool); };
        bars.onPick = [this](const QColor& color) { calls << color.name(); };
        bars.onUndo = [this] { calls << QStringLiteral("undo"); };
        bars.onRedo = [this] { calls << QStringLiteral("redo"); };
        bars.onAction = [this](Toolbar::Action action) {
            calls << QStringLiteral("action %1").arg(static_cast<int>(action));
        };
        bars.onSize = [this](double size, Tool tool) {
            calls << QStringLiteral("%1 %2").arg(name(tool)).arg(size);
        };
        bars.onOpacity = [this](double opacity) {
            calls << QStringLiteral("opacity %1").arg(opacity);
        };
        bars.layOut(kBarsSelection, kBarsCanvas);
    }

    [[nodiscard]] BarView& bar(Qt::Orientation orientation) const
    {
        const QList<BarView*> all = canvas.findChildren<BarView*>();
        const bool upright = orientation == Qt::Vertical;
        const bool first = (all.at(0)->height() > all.at(0)->width()) == upright;
        return *all.at(first ? 0 : 1);
    }
    [[nodiscard]] const std::vector<BarButton*>& tools() const
    {
        return bar(Qt::Vertical).buttons();
    }
    [[nodiscard]] const std::vector<BarButton*>& actions() const
    {
        return bar(Qt::Horizontal).buttons();
    }
    [[nodiscard]] BarButton& toolButton(Tool tool) const
    {
        return *tools().at(1 + static_cast<std::size_t>(tool));
    }
    [[nodiscard]] BarButton& colorButton() const { return *tools().at(9); }
    [[nodiscard]] QList<PaletteView*> popups() const { return canvas.findChildren<PaletteView*>(); }
    [[nodiscard]] PaletteView& popup(const QString& sliderTooltip) const
    {
        const QList<PaletteView*> all = popups();
        return **std::find_if(all.begin(), all.end(), [&](const PaletteView* each) {
            return each->track().toolTip() == sliderTooltip;
        });
    }
    [[nodiscard]] PaletteView& palette() const
    {
        return popup(QStringLiteral("Opacidad del marcador"));
    }
    [[nodiscard]] PaletteView& sizePopup(Tool tool) const
    {
        return popup(sizeLabel(tool).value_or(QString()));
    }
    /// What was called since the last time.
    QStringList taken() { return std::exchange(calls, {}); }

    bool activate()
    {
        bars.show();
        canvas.show();
        canvas.activateWindow();
        if (!QTest::qWaitForWindowActive(&canvas))
            return false;
        canvas.setFocus();
        return true;
    }
};

} // namespace brindlecam::test
