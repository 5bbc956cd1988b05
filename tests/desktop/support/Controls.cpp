#include "desktop/support/Controls.h"

#include "desktop/support/Patience.h"

#include <QHash>

#include <algorithm>
#include <cmath>

namespace brindlecam::desktop {

namespace {

// Numbers of AT-SPI: states.
constexpr std::uint32_t kActive = 1;
constexpr std::uint32_t kChecked = 4;
constexpr std::uint32_t kEnabled = 8;
constexpr std::uint32_t kFocused = 12;
constexpr std::uint32_t kPressed = 20;

// Scales of screens are whole quarters.
constexpr qreal kScaleSteps = 4;

/// How a window's points become native pixels.
struct Placement {
    QPoint origin; ///< in points
    QRect pixels;
    qreal scale = 1;

    [[nodiscard]] QRect place(const QRect& points) const
    {
        const QPointF from = QPointF(points.topLeft() - origin) * scale + pixels.topLeft();
        const QPointF to = from + QPointF(points.width(), points.height()) * scale;
        const QPoint end = to.toPoint();
        return {from.toPoint(), end - QPoint(1, 1)};
    }
};

ControlKind kindOf(std::uint32_t role)
{
    switch (role) { // numbers of AT-SPI
    // Check box, push button, radio button, toggle button.
    case 7:
    case 43:
    case 44:
    case 62:
        return ControlKind::button;
    // Check item, item with a menu of its own, item, radio item.
    case 8:
    case 33:
    case 35:
    case 45:
        return ControlKind::menuItem;
    case 51:
        return ControlKind::slider;
    case 61:
        return ControlKind::text;
    default:
        return ControlKind::other;
    }
}

bool isCalled(const QString& whole, const QString& name)
{
    return whole == name || whole.startsWith(name + QLatin1String(" ("));
}

/// The native window whose place, on one of the monitors, is this in points.
std::optional<Placement> placementOf(const QRect& points, const std::vector<SeenWindow>& windows,
                                     const std::vector<QRect>& monitors)
{
    if (points.isEmpty())
        return std::nullopt;
    for (const SeenWindow& window : windows) {
        const QRect& pixels = window.pixels;
        const qreal scale = std::round(kScaleSteps * pixels.width() / points.width()) / kScaleSteps;
        const auto isNear = [scale](QPointF pixel, QPointF point) {
            const QPointF apart = pixel - point * scale;
            return std::abs(apart.x()) <= scale && std::abs(apart.y()) <= scale;
        };
        const auto bySize = [](const QRect& rect) { return QPointF(rect.width(), rect.height()); };
        const auto isThere = [&](const QRect& monitor) {
            return isNear(pixels.topLeft() - monitor.topLeft(),
                          points.topLeft() - monitor.topLeft());
        };
        if (isNear(bySize(pixels), bySize(points)) && std::ranges::any_of(monitors, isThere))
            return Placement{.origin = points.topLeft(), .pixels = pixels, .scale = scale};
    }
    return std::nullopt;
}

} // namespace

Controls::Controls(const ProgramUnderTest& program, Desktop& desktop)
    : m_program(program)
    , m_desktop(desktop)
{
}

std::optional<Control> Controls::find(const QString& name, std::optional<ControlKind> kind)
{
    std::optional<Control> found;
    if (waitUntil([&] {
            found = look(name, kind);
            return found.has_value();
        }))
        return found;
    qWarning("no control is called \"%s\"; shown are:", qPrintable(name));
    for (const Control& control : shown())
        qWarning("  \"%s\"", qPrintable(control.name));
    return std::nullopt;
}

std::optional<Control> Controls::look(const QString& name, std::optional<ControlKind> kind)
{
    std::optional<Control> found;
    for (const Control& control : shown()) {
        if (isCalled(control.name, name) && control.kind == kind.value_or(control.kind) &&
            (!found || control.inActiveWindow))
            found = control;
    }
    return found;
}

std::vector<Control> Controls::shown()
{
    if (!m_program.isRunning())
        return {};
    const AccessBus& bus = *m_desktop.accessBus();
    if (!m_tree || !m_tree->isOf(bus, m_program.pid()))
        m_tree.emplace(bus, m_program.pid());
    const std::vector<AccessNode> nodes = m_tree->shown();
    const std::vector<SeenWindow> windows = m_desktop.windows().shown(m_program.pid());
    const std::vector<QRect> monitors = m_desktop.screen().monitors();
    QHash<std::size_t, std::optional<Placement>> placements;
    std::vector<Control> controls;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const AccessNode& node = nodes.at(i);
        if (node.window == i)
            placements.insert(i, placementOf(node.points, windows, monitors));
        const std::optional<Placement>& placement = placements[node.window];
        if (placement)
            controls.push_back({.name = node.name,
                                .kind = kindOf(node.role),
                                .enabled = node.is(kEnabled),
                                .on = node.is(kChecked) || node.is(kPressed),
                                .focused = node.is(kFocused),
                                .inActiveWindow = nodes.at(node.window).is(kActive),
                                .pixels = placement->place(node.points)});
    }
    return controls;
}

} // namespace brindlecam::desktop
