#include "Captures.h"
#include "Failure.h"
#include "Runs.h"
#include "Steps.h"

#include <QDir>
#include <QFile>

namespace brindlecam::soak {

namespace {

void commandIsAnswered(World& world, const QStringList& arguments, int exitCode)
{
    const auto result = world.person.program().command(arguments);
    require(result.exitCode == exitCode, QStringLiteral("%1 ends with code %2 instead of %3")
                                             .arg(arguments.join(QLatin1Char(' ')))
                                             .arg(result.exitCode)
                                             .arg(exitCode));
}

void askVersion(World& world)
{
    commandIsAnswered(world, {QStringLiteral("--version")}, 0);
}

void mistype(World& world)
{
    constexpr int kWrongArguments = 64;
    commandIsAnswered(world, {QStringLiteral("captura")}, kWrongArguments);
}

/// A capture that nobody may begin while another one is open.
void beginAnother(World& world)
{
    constexpr int kBusy = 4;
    world.person.pressHotKeyAtOnce(desktop::kFullScreenKey);
    commandIsAnswered(world, {QStringLiteral("area")}, kBusy);
}

/// Whoever starts the program once more wants to take an area.
void startAgain(World& world)
{
    const Picture frozen = world.freeze(world.monitors.front());
    commandIsAnswered(world, {}, 0);
    require(world.person.sessionIsReady(world.monitors.size()), QStringLiteral("no session opens"));
    world.session = Session{.frozen = frozen};
}

void lookAbout(World& world)
{
    Runs::chooseInTray(world, "Acerca de Brindlecam");
    require(world.person.dialogHasKeyboard(), QStringLiteral("nothing about the program comes"));
    world.person.input().tap(Qt::Key_Escape);
}

void throwFilesAway(World& world)
{
    const QString folder = world.ledger->files().folder();
    for (const QString& name : QDir(folder).entryList(QDir::Files))
        QFile::remove(folder + QLatin1Char('/') + name);
    world.ledger->files().forgetAll();
}

} // namespace

std::vector<Step> programSteps()
{
    constexpr int kMany = 40; // files
    const auto hasMany = [](const World& world) { return world.ledger->files().count() > kMany; };
    return {
        {"asks for the version", Situation::rest, 1, askVersion},
        {"mistypes a command", Situation::rest, 1, mistype},
        {"starts the program again", Situation::rest, 1, startAgain},
        {"reads about the program", Situation::rest, 1, lookAbout},
        {"throws files away", Situation::rest, 20, throwFilesAway, hasMany},
        {"begins another capture", Situation::session, 1, beginAnother},
        {"begins another capture, an area selected", Situation::selected, 1, beginAnother},
        {"begins another capture, the panel open", Situation::panel, 1, beginAnother},
    };
}

std::vector<Step> allSteps()
{
    std::vector<Step> all;
    for (const auto& some :
         {captureSteps(), markSteps(), pinSteps(), drawerSteps(), settingsSteps(), programSteps()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

} // namespace brindlecam::soak
