#include "Captures.h"
#include "Failure.h"
#include "Faults.h"
#include "Runs.h"

#include "desktop/support/Launchers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace brindlecam::soak {

namespace {

using Captures::Trigger;

constexpr auto kLocked = QFile::ReadOwner | QFile::ExeOwner;
constexpr auto kOpen = kLocked | QFile::WriteOwner;

const QString kNotSaved = QStringLiteral("Copiado, pero no se pudo guardar en la carpeta");

QString aside(const QString& folder)
{
    return folder + QStringLiteral(" aside");
}

/// A file takes the place of the folder, which is kept elsewhere meanwhile. Not in the moment in
/// which the program still holds its lock there: it would say in its log that the lock has gone.
void obstruct(KeptFiles& files)
{
    const QString folder = files.folder();
    QDir().mkpath(folder);
    const QString lock = folder + QStringLiteral("/.brindlecam.lock");
    require(desktop::waitUntil([&] { return !QFile::exists(lock); }),
            QStringLiteral("a folder stays locked"));
    QFile file(folder);
    require(QDir().rename(folder, aside(folder)) && file.open(QIODevice::WriteOnly),
            QStringLiteral("a folder cannot be replaced"));
    files.follow(aside(folder));
}

void clear(KeptFiles& files, const QString& folder)
{
    require(QFile::remove(folder) && QDir().rename(aside(folder), folder),
            QStringLiteral("a folder cannot be brought back"));
    files.follow(folder);
}

/// Where a file cannot be written the user is told, and nothing else is lost.
void takeUnsaved(World& world)
{
    Captures::open(world, Trigger::key);
    Captures::dragRoomy(world);
    Captures::take(world);
    require(!world.settings.autoSaveArea || world.person.toastSays(kNotSaved),
            QStringLiteral("nobody is told that nothing was saved"));
}

void capturesAreLocked(World& world)
{
    const QString folder = world.person.program().folders().captures();
    QDir().mkpath(folder);
    QFile::setPermissions(folder, kLocked);
    world.ledger->refuseFiles(true);
    takeUnsaved(world);
}

void capturesAreOpen(World& world)
{
    QFile::setPermissions(world.person.program().folders().captures(), kOpen);
    world.ledger->refuseFiles(false);
}

void capturesAreAFile(World& world)
{
    obstruct(world.ledger->files());
    world.ledger->refuseFiles(true);
    takeUnsaved(world);
}

void capturesAreAFolder(World& world)
{
    clear(world.ledger->files(), world.person.program().folders().captures());
    world.ledger->refuseFiles(false);
}

void capturesAreRemoved(World& world)
{
    QDir(world.person.program().folders().captures()).removeRecursively();
    world.ledger->files().forgetAll();
    Captures::fullScreen(world, Trigger::key);
}

void historyIsAFile(World& world)
{
    obstruct(world.ledger->history());
    world.ledger->refuseHistory(true);
}

void historyIsAFolder(World& world)
{
    clear(world.ledger->history(), world.person.program().folders().history());
    world.ledger->refuseHistory(false);
}

bool disksCanBeMade(const World& world)
{
    return desktop::Launchers::withSmallDisk(QFileInfo(world.clock).path(), 0).has_value();
}

/// The disk is there as long as the run that was started with it.
void diskIsFull(World& world)
{
    desktop::ProgramUnderTest& program = world.person.program();
    const QString folder = program.folders().captures();
    QDir().mkpath(folder);
    Runs::quit(world);
    program.setLauncher(desktop::Launchers::withSmallDisk(folder, 0).value() +
                        desktop::Launchers::withoutPrivileges());
    world.ledger->refuseFiles(true);
    Runs::start(world);
    takeUnsaved(world);
    Captures::fullScreen(world, Trigger::command);
    world.ledger->verify(world.person.desktop().clipboard());
    const QDir inside(desktop::Launchers::insideOf(program.pid(), folder));
    require(inside.entryList(QDir::Files | QDir::Hidden) == QStringList(QStringLiteral("relleno")),
            QStringLiteral("something is left on the full disk"));
    Runs::quit(world);
    program.setLauncher(desktop::Launchers::withoutPrivileges());
    world.ledger->refuseFiles(false);
    Runs::start(world);
}

} // namespace

std::vector<Fault> folderFaults()
{
    return {
        {"the captures folder is locked", "nobody may write there for some steps",
         "the user is told, nothing else is lost", Part::captures, Run::goesOn, Situation::rest,
         capturesAreLocked, capturesAreOpen},
        {"a file in place of the captures folder", "for some steps",
         "the user is told, nothing else is lost", Part::captures, Run::goesOn, Situation::rest,
         capturesAreAFile, capturesAreAFolder},
        {"the captures folder is removed", "with all that is in it", "it is made anew",
         Part::captures, Run::goesOn, Situation::rest, capturesAreRemoved},
        {"a file in place of the history", "for some steps", "nothing else is lost", Part::history,
         Run::goesOn, Situation::rest, historyIsAFile, historyIsAFolder},
        {"the disk is full",
         "of the captures folder, for a run",
         "the user is told, nothing is left half written",
         Part::captures,
         Run::another,
         Situation::rest,
         diskIsFull,
         {},
         disksCanBeMade},
    };
}

} // namespace brindlecam::soak
