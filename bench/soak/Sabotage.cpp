#include "Sabotage.h"

#include "Captures.h"
#include "Drawers.h"
#include "Failure.h"
#include "Growth.h"
#include "Invariants.h"
#include "SettingsWindows.h"
#include "World.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <functional>
#include <vector>

namespace brindlecam::soak {

namespace {

constexpr int kPatience = 1500; // ms: what is broken does not come right

struct Sabotage {
    const char* name;
    const char* seenAs; ///< how the complaint begins
    std::function<void(World&)> act;
};

QString newestInHistory(const World& world)
{
    const QDir folder(world.ledger->history().folder());
    return folder.filePath(folder.entryList(QDir::Files, QDir::Name).last());
}

void append(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    require(file.open(QIODevice::Append) && file.write(bytes) == bytes.size(),
            QStringLiteral("a file cannot be changed"));
}

void takeWithOnePixelWrong(World& world)
{
    Captures::open(world, Captures::Trigger::command);
    Captures::dragRoomy(world);
    QImage& frozen = world.session->frozen.pixels;
    const QPoint pixel = world.session->area.center();
    frozen.setPixelColor(pixel, QColor(255, 255, 255 - frozen.pixelColor(pixel).blue()));
    world.session->live.reset();
    Captures::take(world);
}

void pin(World& world)
{
    Captures::open(world, Captures::Trigger::command);
    Captures::drag(world, Scene::kForPins.adjusted(0, 0, -300, -100));
    Captures::pin(world);
}

void leaveAPin(World& world)
{
    pin(world);
    world.pins.clear();
}

void changeAPin(World& world)
{
    pin(world);
    world.pins.front().picture.pixels.invertPixels();
}

void leaveAnOverlay(World& world)
{
    Captures::open(world, Captures::Trigger::command);
    world.session.reset();
}

void leaveADrawer(World& world)
{
    Drawers::open(world, Captures::Trigger::command);
    world.drawer.reset();
}

void changeATile(World& world)
{
    Drawers::open(world, Captures::Trigger::command);
    world.drawer->tiles.front().picture.pixels.invertPixels();
}

void leaveTheSettings(World& world)
{
    SettingsWindows::open(world, SettingsWindows::Trigger::command);
    world.settingsAreOpen = false;
}

/// As if the drawer had been told to.
void removeNothing(World& world)
{
    world.ledger->history().goes(newestInHistory(world));
}

void leaveAThumbnail(World& world)
{
    const QString name = newestInHistory(world).section(QLatin1Char('/'), -1);
    const auto isThere = [&] {
        return !world.thumbnails().entryList({name + QLatin1Char('*')}, QDir::Files).isEmpty();
    };
    require(desktop::waitUntil(isThere), QStringLiteral("a capture gets no thumbnail"));
    world.removed << name;
}

void emptyNothing(World& world)
{
    world.ledger->history().allGo();
}

void keepTheProgramFromSaving(World& world)
{
    Captures::fullScreen(world, Captures::Trigger::command);
    world.ledger->verify(world.person.desktop().clipboard());
    // Nobody takes this one.
    world.ledger->takes(Picture::exactly(world.person.screen().grab()),
                        {.clipboard = false, .file = true});
}

std::vector<Sabotage> sabotages()
{
    return {
        {"the program is killed", "the program does not run",
         [](World& world) { world.person.program().kill(); }},
        {"an overlay is left", "the screen: 1 overlays instead of 0", leaveAnOverlay},
        {"a pin is left", "the screen: 1 pins instead of 0", leaveAPin},
        {"a pin shows another picture", "the screen: another picture in the pin", changeAPin},
        {"a picture has one wrong pixel", "the clipboard: another picture", takeWithOnePixelWrong},
        {"the clipboard is taken", "the clipboard: ",
         [](World& world) { world.person.desktop().copyElsewhere(QStringLiteral("x")); }},
        {"a picture is not saved", "the captures folder: 0 new pictures instead of 1",
         keepTheProgramFromSaving},
        {"a file of the history is changed",
         "the history: ", [](World& world) { append(newestInHistory(world), "x"); }},
        {"a file of the history is gone", "the history: gone are",
         [](World& world) { QFile::remove(newestInHistory(world)); }},
        {"a capture is not removed", "the history: still there is", removeNothing},
        {"a removed capture leaves a thumbnail", "the thumbnails: left is", leaveAThumbnail},
        {"the history is not emptied", "the history: still there is", emptyNothing},
        {"a drawer is left", "the screen: 1 drawers instead of 0", leaveADrawer},
        {"a tile shows another picture", "the screen: another picture in tile 0", changeATile},
        {"the settings are left", "the screen: 1 windows of no kind instead of 0",
         leaveTheSettings},
    };
}

bool tell(const char* name, const QString& complaint, const char* wanted)
{
    const bool isSeen = complaint.startsWith(QString::fromUtf8(wanted));
    std::printf("%-40s %s%s\n", name, isSeen ? "seen: " : "NOT SEEN: ", qPrintable(complaint));
    return isSeen;
}

/// What the invariants say after one good capture and this.
bool isSeen(const Sabotage& sabotage)
{
    Chance chance(1);
    World world(chance);
    Invariants invariants(kPatience);
    Captures::fullScreen(world, Captures::Trigger::command);
    invariants.verify(world);
    sabotage.act(world);
    try {
        invariants.verify(world);
    } catch (const Failure& failure) {
        return tell(sabotage.name, failure.what, sabotage.seenAs);
    }
    return tell(sabotage.name, {}, sabotage.seenAs);
}

QString complaintAbout(const std::function<void()>& act)
{
    try {
        act();
    } catch (const Failure& failure) {
        return failure.what;
    }
    return {};
}

bool growthIsSeen()
{
    constexpr int kLooks = 400;
    constexpr qint64 kLeak = 256; // KiB from one look to the next
    const auto complaint = [](const std::function<void(Footprint&)>& grow) {
        return complaintAbout([&] {
            Growth growth;
            Footprint now{.own = 50'000};
            for (int i = 0; i < kLooks; ++i) {
                grow(now);
                growth.look(
                    1, [&] { return now; }, 0);
            }
        });
    };
    const bool quiet = complaint([](Footprint&) {}).isEmpty();
    return quiet &&
           tell("memory leaks", complaint([](Footprint& now) { now.own += kLeak; }),
                "the program grows") &&
           tell("descriptors leak", complaint([](Footprint& now) { ++now.descriptors; }),
                "the program grows") &&
           tell("pictures leak", complaint([](Footprint& now) { ++now.held.pictures; }),
                "the program grows");
}

bool logIsSeen()
{
    LogWatch log;
    log.verify(QString());
    return tell("the program complains",
                complaintAbout([&] { log.verify(QStringLiteral("a warning\n")); }), "the log: ");
}

} // namespace

bool seesEverySabotage()
{
    bool all = growthIsSeen() && logIsSeen();
    for (const Sabotage& sabotage : sabotages())
        all = isSeen(sabotage) && all;
    return all;
}

} // namespace brindlecam::soak
