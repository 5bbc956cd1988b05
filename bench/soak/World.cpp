#include "World.h"

#include "Failure.h"
#include "Runs.h"

#include "desktop/support/Launchers.h"

#include <algorithm>

namespace brindlecam::soak {

QJsonObject Settings::toJson() const
{
    return {{QStringLiteral("autoCopy"), autoCopy},
            {QStringLiteral("autoSaveArea"), autoSaveArea},
            {QStringLiteral("autoSaveFullScreen"), autoSaveFullScreen},
            {QStringLiteral("keepHistory"), keepHistory},
            {QStringLiteral("showLoupe"), showLoupe}};
}

World::World(Chance& chanceOfAll)
    : chance(chanceOfAll)
{
    person.usePatternedDesktop(
        {.bus = desktop::MessageBus::session, .accessibility = desktop::Accessibility::on});
    scene = std::make_unique<Scene>(person);
    desktop::ProgramUnderTest& program = person.program();
    ledger = std::make_unique<Ledger>(program.folders());
    // A folder that refuses does so for everybody.
    program.setLauncher(desktop::Launchers::withoutPrivileges());
    clock = program.folders().home() + QStringLiteral("/clock");
    Runs::shiftClock(*this, 0);
    program.environment().insert(QStringLiteral("LD_PRELOAD"),
                                 QStringLiteral(BRINDLECAM_SHIFTED_CLOCK));
    program.environment().insert(QStringLiteral("SHIFTED_CLOCK"), clock);
    program.writeSettings(settings.toJson());
    Runs::openTray(*this);
    Runs::start(*this);
}

Situation World::situation() const
{
    if (session)
        return session->stage;
    if (drawer)
        return Situation::drawer;
    return settingsAreOpen ? Situation::settings : Situation::rest;
}

QDir World::thumbnails()
{
    return {person.program().folders().home() + QStringLiteral("/cache/brindlecam/thumbnails")};
}

bool World::isSeen(const Pin& pin)
{
    const QImage seen = person.screen().grab(pin.place);
    if (pin.place.size() != pin.picture.pixels.size())
        return pin.picture.resembles(seen);
    const Picture inside{pin.picture.pixels,
                         pin.picture.certain & Person::inside(pin.place.size())};
    return inside.isShownBy(seen);
}

Picture World::freeze(const QRect& monitor)
{
    // What has just been uncovered is painted anew.
    for (const Pin& pin : pins)
        require(desktop::waitUntil([&] { return isSeen(pin); }),
                QStringLiteral("a pin does not show its picture"));
    return scene->freeze(chance, monitor);
}

bool World::isFreeForPin(const QRect& place, const Pin* moved) const
{
    return Scene::kForPins.contains(place) && std::ranges::none_of(pins, [&](const Pin& other) {
               return &other != moved && other.place.intersects(place);
           });
}

} // namespace brindlecam::soak
