#include "Bars.h"
#include "Captures.h"
#include "Failure.h"
#include "Steps.h"

#include "desktop/ToolNames.h"

namespace brindlecam::soak {

namespace {

/// Waits until the area no longer looks as before, and until no more changes.
void awaitChange(World& world, const QImage& before)
{
    const QRect area = world.session->area;
    const auto changed = [&] { return world.person.screen().grab(area) != before; };
    require(desktop::waitUntil(changed), QStringLiteral("nothing changes in the area"));
    // Away from the area: what the pointer is over may light up.
    world.person.input().moveTo(world.monitors.front().bottomLeft() + QPoint(20, -20));
    require(!world.person.screen().grabAtRest().isNull(), QStringLiteral("the area never rests"));
    Captures::pictureChanged(world);
}

/// Where marks are begun and ended, away from handles and bars.
QRect canvas(const World& world)
{
    constexpr int kMargin = 16;
    return world.session->area.adjusted(kMargin, kMargin, -kMargin, -kMargin);
}

void choose(World& world, Tool tool)
{
    if (world.session->tool == tool)
        return; // pressed again it gives way to the pointer
    Bars::press(world.person, desktop::nameOf(tool));
    world.session->tool = tool;
}

void added(World& world, const QImage& before)
{
    ++world.session->marks;
    world.session->undone = 0;
    awaitChange(world, before);
}

/// A stroke from a corner of the canvas to another one, far enough that the mark is kept.
void draw(World& world, Tool tool)
{
    choose(world, tool);
    const QImage before = world.person.screen().grab(world.session->area);
    const QRect where = canvas(world);
    const QPoint way(where.width() / 4, where.height() / 4);
    const QPoint from = world.chance.pointIn({where.topLeft(), where.center() - way});
    const QPoint to = world.chance.pointIn({where.center() + way, where.bottomRight()});
    if (tool == Tool::number)
        world.person.input().click(from);
    else
        world.person.input().drag(from, to);
    added(world, before);
}

void drawAny(World& world)
{
    static const std::vector kDrawn{Tool::pen,  Tool::line,   Tool::arrow,
                                    Tool::rect, Tool::marker, Tool::number};
    draw(world, world.chance.oneOf(kDrawn));
}

/// Once: what is coarse or plain already would look as before.
bool mayBePixelated(const World& world)
{
    const QRect area = world.session->area;
    return Captures::barsHaveRoom(world) && world.session->marks == 0 &&
           world.session->undone == 0 && !area.intersects(world.scene->page()) &&
           !area.intersects(world.scene->framed().framePixels());
}

void pixelate(World& world)
{
    draw(world, Tool::pixelate);
}

void write(World& world)
{
    choose(world, Tool::text);
    const QImage before = world.person.screen().grab(world.session->area);
    world.person.input().click(canvas(world).topLeft() + QPoint(4, 4));
    world.person.input().type("paso " + std::to_string(world.step));
    world.person.input().tap(Qt::Key_Return);
    added(world, before);
}

void undo(World& world)
{
    const QImage before = world.person.screen().grab(world.session->area);
    world.person.input().chord({Qt::Key_Control, Qt::Key_Z});
    --world.session->marks;
    ++world.session->undone;
    awaitChange(world, before);
}

void redo(World& world)
{
    const QImage before = world.person.screen().grab(world.session->area);
    world.person.input().chord({Qt::Key_Control, Qt::Key_Shift, Qt::Key_Z});
    ++world.session->marks;
    --world.session->undone;
    awaitChange(world, before);
}

} // namespace

std::vector<Step> markSteps()
{
    return {
        {"draws a mark", Situation::selected, 8, drawAny, Captures::barsHaveRoom},
        {"pixelates a part", Situation::selected, 2, pixelate, mayBePixelated},
        {"writes a text", Situation::selected, 2, write, Captures::barsHaveRoom},
        {"takes a mark back", Situation::selected, 2, undo,
         [](const World& world) { return world.session->marks > 0; }},
        {"brings a mark back", Situation::selected, 2, redo,
         [](const World& world) { return world.session->undone > 0; }},
    };
}

} // namespace brindlecam::soak
