#include "Invariants.h"

#include "Drawers.h"
#include "Failure.h"
#include "Runs.h"
#include "World.h"

#include <algorithm>

namespace brindlecam::soak {

namespace {

using desktop::Role;

/// What is shown of the program, in words; empty when that is what must be.
QString strangeness(World& world)
{
    QStringList strange;
    auto all = world.person.windows().shown(world.person.program().pid());
    std::erase_if(all, Person::isDrawer); // which are of the same kind as pins
    const auto count = [&](Role role, std::size_t wanted, const char* what) {
        const auto found =
            static_cast<std::size_t>(std::ranges::count(all, role, &desktop::SeenWindow::role));
        if (found != wanted)
            strange << QStringLiteral("%1 %2 instead of %3")
                           .arg(found)
                           .arg(QString::fromLatin1(what))
                           .arg(wanted);
    };
    const Situation situation = world.situation();
    const bool covered = situation == Situation::session || situation == Situation::selected;
    count(Role::overlay, covered ? world.monitors.size() : 0, "overlays");
    count(Role::dialog, situation == Situation::panel ? 1 : 0, "dialogs");
    count(Role::menu, 0, "menus");
    count(Role::other, situation == Situation::settings ? 1 : 0, "windows of no kind");
    count(Role::pin, world.pins.size(), "pins");
    const std::size_t drawers = world.person.drawers().size();
    if (drawers != (world.drawer ? 1U : 0U))
        strange
            << QStringLiteral("%1 drawers instead of %2").arg(drawers).arg(world.drawer ? 1 : 0);
    for (const Pin& pin : world.pins) {
        if (std::ranges::count(all, pin.place, &desktop::SeenWindow::pixels) == 0)
            strange << QStringLiteral("no pin at %1, %2").arg(pin.place.x()).arg(pin.place.y());
        else if (situation == Situation::rest && !world.isSeen(pin))
            strange << QStringLiteral("another picture in the pin at %1, %2")
                           .arg(pin.place.x())
                           .arg(pin.place.y());
    }
    if (world.drawer && strange.isEmpty())
        strange << Drawers::strangeness(world);
    strange.removeAll(QString());
    return strange.join(QStringLiteral(", "));
}

} // namespace

Invariants::Invariants(int patienceMilliseconds)
    : m_patience(patienceMilliseconds)
{
}

void Invariants::verify(World& world)
{
    verifyRun(world);
    verifyWindows(world);
    world.ledger->verify(world.person.desktop().clipboard(), m_patience);
    verifyRemoved(world);
    m_log.verify(world.person.program().log());
    verifyGrowth(world);
}

void Invariants::verifyRun(World& world) const
{
    constexpr int kWrong = 64; // the answer to a word that means nothing, in any state
    desktop::ProgramUnderTest& program = world.person.program();
    require(program.isRunning(), QStringLiteral("the program does not run: %1").arg(program.log()));
    const int answer = program.answerTo("1 nada %2F\n");
    require(answer == kWrong, QStringLiteral("the program does not answer: %1").arg(answer));
}

void Invariants::verifyWindows(World& world) const
{
    QString strange;
    const auto isAsItMustBe = [&] {
        strange = strangeness(world);
        return strange.isEmpty();
    };
    const bool isRight = desktop::waitUntil(isAsItMustBe, m_patience);
    require(isRight, QStringLiteral("the screen: %1").arg(strange));
    const bool hasEscape = world.situation() == Situation::session ||
                           world.situation() == Situation::selected ||
                           world.situation() == Situation::drawer;
    const auto rival = world.person.desktop().rival();
    const auto escapeIsRight = [&] {
        return rival->isHotKeyTaken(Qt::Key_Escape, {}) == hasEscape;
    };
    require(desktop::waitUntil(escapeIsRight, m_patience),
            QStringLiteral("Escape is the program's when it should not be, or the reverse"));
}

// What is gone from the history is to be seen nowhere.
void Invariants::verifyRemoved(World& world) const
{
    const QDir thumbnails = world.thumbnails();
    QString left;
    const auto nothingIsLeft = [&] {
        const QStringList names = thumbnails.entryList(QDir::Files | QDir::Hidden);
        const auto isOfRemoved = [&](const QString& name) {
            return std::ranges::any_of(
                world.removed, [&](const QString& removed) { return name.startsWith(removed); });
        };
        const auto found = std::ranges::find_if(names, isOfRemoved);
        left = found == names.end() ? QString() : *found;
        return left.isEmpty();
    };
    const bool isGone = desktop::waitUntil(nothingIsLeft, m_patience);
    require(isGone, QStringLiteral("the thumbnails: left is %1").arg(left));
}

void Invariants::verifyGrowth(World& world)
{
    if (world.situation() != Situation::rest || !world.pins.empty())
        return;
    const qint64 pid = world.person.program().pid();
    m_growth.look(
        pid, [&] { return Footprint::of(world.person.desktop(), pid); }, m_patience);
}

void Invariants::verifyEnd(World& world)
{
    const qint64 pid = world.person.program().pid();
    Runs::quit(world);
    require(world.person.windows().shown(pid).empty(),
            QStringLiteral("windows of a program that has ended"));
    world.ledger->verify(world.person.desktop().clipboard(), m_patience);
    m_log.verify(world.person.program().log());
}

} // namespace brindlecam::soak
