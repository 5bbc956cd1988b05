#include "Captures.h"
#include "Failure.h"
#include "Faults.h"
#include "Runs.h"

#include <array>

namespace brindlecam::soak {

namespace {

using Captures::Trigger;

void othersCopy(World& world)
{
    const QString text = QStringLiteral("de otro programa, %1").arg(world.step);
    world.person.desktop().copyElsewhere(text);
    world.ledger->othersCopy(text);
}

/// While the program encodes and serves, and until it has done so.
void othersCopyOverAndOver(World& world)
{
    constexpr int kTimes = 6;
    constexpr int kLongest = 40; // ms: a picture takes about as long
    Captures::fullScreen(world, Trigger::command);
    for (int i = 0; i < kTimes; ++i) {
        othersCopy(world);
        QTest::qWait(world.chance.below(kLongest)); // any moment of the picture's way
    }
    world.ledger->files().verify();
    world.ledger->history().verify();
    othersCopy(world);
}

void readersVanish(World& world)
{
    Captures::fullScreen(world, Trigger::command);
    world.ledger->verify(world.person.desktop().clipboard());
    for (const char* format : {"image/png", "image/tiff", "TARGETS", "image/png"})
        world.person.desktop().clipboard().askAndLeave(format);
}

void connectionIsCut(World& world)
{
    Captures::fullScreen(world, Trigger::command);
    world.ledger->verify(world.person.desktop().clipboard());
    world.person.desktop().clipboard().cutOwnersConnection();
}

void managerLooksOn(World& world)
{
    world.manager = world.person.desktop().startClipboardManager(desktop::KeepsBy::looking);
}

void managerGoes(World& world)
{
    world.manager.reset();
}

void managerTakesOver(World& world)
{
    const auto manager = world.person.desktop().startClipboardManager(desktop::KeepsBy::handing);
    Captures::fullScreen(world, Trigger::command);
    world.ledger->verify(world.person.desktop().clipboard());
    const QImage picture = world.person.desktop().clipboard().picture();
    Runs::quit(world);
    const auto kept = manager->handedOver();
    require(kept && Picture::exactly(picture).isShownBy(QImage::fromData(*kept, "PNG")),
            QStringLiteral("the clipboard manager does not get the picture"));
    Runs::start(world);
}

} // namespace

std::vector<Fault> clipboardFaults()
{
    return {
        {"another program copies", "a text takes the picture's place", "the text stays",
         Part::nothing, Run::goesOn, Situation::rest, othersCopy},
        {"another program copies in a session", "a text takes the live copy's place",
         "the text stays until more is copied", Part::nothing, Run::goesOn, Situation::selected,
         othersCopy},
        {"another program copies over and over", "while a picture is encoded and served",
         "the last one has the clipboard, no picture is lost", Part::nothing, Run::goesOn,
         Situation::rest, othersCopyOverAndOver},
        {"who pastes vanishes", "asks for the picture and is gone", "the next one gets it",
         Part::nothing, Run::goesOn, Situation::rest, readersVanish},
        {"the clipboard's connection is cut", "by the X server", "the picture is offered again",
         Part::nothing, Run::goesOn, Situation::rest, connectionIsCut},
        {"a clipboard manager looks on", "reads whatever comes, for some steps",
         "everybody else gets it, too", Part::clipboardManager, Run::goesOn, Situation::rest,
         managerLooksOn, managerGoes},
        {"a clipboard manager takes over", "the program quits with a picture on the clipboard",
         "the manager has the picture", Part::clipboardManager, Run::another, Situation::rest,
         managerTakesOver},
    };
}

} // namespace brindlecam::soak
