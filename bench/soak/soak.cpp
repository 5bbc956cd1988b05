// Uses the program for a long time while things go wrong around it. Arguments: how many steps, and
// the seed of an earlier walk to take it again; "faults" lists what can go wrong, "sabotage" breaks
// what must hold on purpose. Ends with 0 when everything held.
#include "Evidence.h"
#include "Failure.h"
#include "Sabotage.h"
#include "Walk.h"

#include <QGuiApplication>
#include <QRandomGenerator>
#include <QStringList>

#include <cstdio>

using namespace brindlecam::soak;

namespace {

constexpr int kWrongArguments = 64;

/// For the end that the harness makes where nothing can be tested any more.
const Journal* underWay = nullptr;

void tellStory(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    if (type == QtFatalMsg && underWay)
        std::fprintf(stderr, "%s", qPrintable(underWay->story()));
}

void listFaults()
{
    for (const Fault& fault : allFaults())
        std::printf("%s: %s.\n    Must hold: %s.\n", fault.name, fault.does, fault.holds);
}

bool walk(int steps, std::uint32_t seed)
{
    std::printf("Seed %u, %d steps\n", seed, steps);
    std::fflush(stdout);
    Journal journal(seed, steps);
    underWay = &journal;
    Chance chance(seed);
    World world(chance);
    Walk walk(world, steps, journal);
    try {
        walk.run();
    } catch (Failure& failure) {
        // Whatever misses its answer first need not be the cause.
        if (!world.person.program().isRunning())
            failure.what += QStringLiteral(" (and the program does not run)");
        const QString kept = Evidence::keep(world, failure, journal.story());
        std::printf("FAILED: %s\n%sKept: %s\n", qPrintable(failure.what),
                    qPrintable(journal.story()), qPrintable(kept));
        return false;
    }
    std::printf("%s", qPrintable(journal.table(walk.growth())));
    return true;
}

int usage()
{
    std::fprintf(stderr, "soak STEPS [SEED] | soak faults | soak sabotage\n");
    return kWrongArguments;
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // for the letters of the scene
    const QGuiApplication application(argc, argv);
    qInstallMessageHandler(tellStory);
    const QStringList words = QCoreApplication::arguments().mid(1);
    if (words == QStringList(QStringLiteral("faults"))) {
        listFaults();
        return 0;
    }
    if (words == QStringList(QStringLiteral("sabotage")))
        return seesEverySabotage() ? 0 : 1;
    const int steps = words.value(0).toInt();
    bool isSeed = true;
    const std::uint32_t seed =
        words.size() < 2 ? QRandomGenerator::system()->generate() : words.at(1).toUInt(&isSeed);
    if (steps <= 0 || !isSeed || words.size() > 2)
        return usage();
    return walk(steps, seed) ? 0 : 1;
}
