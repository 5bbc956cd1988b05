#include "Bars.h"
#include "Captures.h"
#include "Failure.h"
#include "Faults.h"
#include "Runs.h"

#include "desktop/ToolNames.h"

#include <QFile>

namespace brindlecam::soak {

namespace {

void write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
            QStringLiteral("settings cannot be written"));
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void startWith(World& world, const Settings& settings)
{
    Runs::quit(world);
    world.settings = settings;
    world.person.program().writeSettings(settings.toJson());
    Runs::start(world);
}

void areDamaged(World& world)
{
    const QByteArray torn = "{\"autoCopy\": fal";
    const QString path = world.person.program().folders().settingsFile();
    const QString damaged = path + QStringLiteral(".damaged");
    Runs::quit(world);
    write(path, torn);
    world.settings = {.showLoupe = true};
    Runs::start(world);
    require(world.person.dialogHasKeyboard(), QStringLiteral("nobody is welcomed anew"));
    // Not by a key: so soon after its start Qt sends those over the harness's accessibility bus,
    // which knows nothing of them, and complains.
    require(world.person.press("Aceptar") && world.person.dialogsAreGone(),
            QStringLiteral("the welcome stays"));
    Captures::open(world, Captures::Trigger::key);
    Captures::dragRoomy(world);
    Captures::take(world);
    world.ledger->verify(world.person.desktop().clipboard());
    require(contentOf(damaged) == torn && QFile::remove(damaged),
            QStringLiteral("damaged settings are not kept aside"));
    startWith(world, {});
}

void areOthers(World& world)
{
    Chance& chance = world.chance;
    startWith(world, {.autoCopy = !chance.oneIn(3),
                      .autoSaveArea = !chance.oneIn(4),
                      .autoSaveFullScreen = !chance.oneIn(4),
                      .keepHistory = !chance.oneIn(6),
                      .showLoupe = chance.oneIn(3)});
}

/// Somebody writes into the file, and then the program does.
void areEditedMeanwhile(World& world)
{
    const QString own = QStringLiteral("mío");
    const QString size = QStringLiteral("size.pen");
    Captures::reachBars(world);
    if (world.session->tool != Tool::pen)
        Bars::press(world.person, desktop::nameOf(Tool::pen));
    world.session->tool = Tool::pen;
    QJsonObject all = world.person.program().settings();
    all.insert(own, world.step);
    world.person.program().writeSettings(all);
    constexpr int kStandard = 3;
    constexpr int kMiddling = 10;
    const int before = all.value(size).toInt(kStandard);
    world.person.input().click(world.session->area.center(), before < kMiddling
                                                                 ? desktop::Button::wheelUp
                                                                 : desktop::Button::wheelDown);
    const auto bothAreThere = [&] {
        const QJsonObject now = world.person.program().settings();
        return now.value(own).toInt() == world.step && now.value(size).toInt(kStandard) != before;
    };
    require(desktop::waitUntil(bothAreThere),
            QStringLiteral("two who write settings lose each other's"));
}

} // namespace

std::vector<Fault> settingsFaults()
{
    return {
        {"the settings are damaged", "cut off before a start", "defaults count, the rest is kept",
         Part::nothing, Run::another, Situation::rest, areDamaged},
        {"other settings", "at the next start", "they count", Part::nothing, Run::another,
         Situation::rest, areOthers},
        {"somebody edits the settings", "while the program runs",
         "neither loses what the other writes", Part::nothing, Run::goesOn, Situation::selected,
         areEditedMeanwhile},
    };
}

} // namespace brindlecam::soak
