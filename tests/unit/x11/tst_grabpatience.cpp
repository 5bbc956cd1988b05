#include "platform/x11/keys/GrabPatience.h"
#include "support/TestCase.h"

namespace brindlecam {

using x11::GrabPatience;
using Seen = GrabPatience::Seen;
using Step = GrabPatience::Step;

namespace {

const Seen kFree{};
const Seen kMenu{.taken = true, .menus = {7}};
const Seen kMenuWithSubmenu{.taken = true, .menus = {7, 8}};
const Seen kOther{.taken = true};
const Seen kHeld{.taken = true, .held = true};
constexpr int kForever = 10000;

/// How many looks it takes until something else than waiting is to be done.
struct After {
    int looks = 0;
    Step step = Step::wait;
};
After waitsThrough(GrabPatience& patience, const Seen& seen)
{
    After after;
    while (after.step == Step::wait && after.looks < kForever) {
        after.step = patience.next(seen);
        ++after.looks;
    }
    return after;
}

} // namespace

class TestGrabPatience final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void goesOnAtOnceWhenNobodyHasAGrab()
    {
        QCOMPARE(GrabPatience().next(kFree), Step::goOn);
        // Whatever is open or held then.
        QCOMPARE(GrabPatience().next({.held = true, .menus = {7}}), Step::goOn);
    }

    void menuGetsOneEscapeHoweverLongItTakesToClose()
    {
        GrabPatience patience;
        QCOMPARE(patience.next(kMenu), Step::pressEscape);
        for (int look = 0; look < 50; ++look)
            QCOMPARE(patience.next(kMenu), Step::wait);
        QCOMPARE(patience.next(kOther), Step::wait); // closed, and its grab about to end
        QCOMPARE(patience.next(kFree), Step::goOn);
    }

    void menuThatNeverClosesIsLeftAlone()
    {
        GrabPatience patience;
        QCOMPARE(patience.next(kMenu), Step::pressEscape);
        const After after = waitsThrough(patience, kMenu);
        QCOMPARE(after.step, Step::giveUp);
        QVERIFY(after.looks > 50 && after.looks < kForever);
    }

    void eachMenuThatClosesIsFollowedByAnotherEscape()
    {
        GrabPatience patience;
        QCOMPARE(patience.next(kMenuWithSubmenu), Step::pressEscape);
        QCOMPARE(patience.next(kMenuWithSubmenu), Step::wait);
        QCOMPARE(patience.next(kMenu), Step::pressEscape);
        QCOMPARE(patience.next(kMenu), Step::wait);
        QCOMPARE(patience.next(kFree), Step::goOn);
    }

    void thereAreAtMostFiveEscapes()
    {
        GrabPatience patience;
        for (std::uint32_t open = 9; open > 4; --open)
            QCOMPARE(patience.next({.taken = true, .menus = {open}}), Step::pressEscape);
        QCOMPARE(patience.next({.taken = true, .menus = {4}}), Step::wait);
        QCOMPARE(waitsThrough(patience, kMenu).step, Step::giveUp);
    }

    void grabWithoutAMenuGetsNoKeyAndIsGivenUpSoon()
    {
        GrabPatience patience;
        const After after = waitsThrough(patience, kOther);
        QCOMPARE(after.step, Step::giveUp);
        QVERIFY(after.looks > 1 && after.looks < 20);
    }

    void grabThatEndsByItselfIsWaitedFor()
    {
        GrabPatience patience;
        QCOMPARE(patience.next(kOther), Step::wait);
        QCOMPARE(patience.next(kFree), Step::goOn);
    }

    void heldKeyOrButtonIsWaitedForButNotForever()
    {
        GrabPatience patience;
        for (int look = 0; look < 100; ++look)
            QCOMPARE(patience.next(kHeld), Step::wait);
        QCOMPARE(patience.next(kOther), Step::wait); // the grab ends a moment later
        QCOMPARE(patience.next(kFree), Step::goOn);

        GrabPatience other;
        const After after = waitsThrough(other, kHeld);
        QCOMPARE(after.step, Step::giveUp);
        QVERIFY(after.looks > 100 && after.looks < kForever);
    }

    void endlessTypingIntoAnotherProgramDoesNotKeepUsWaiting()
    {
        GrabPatience patience;
        int looks = 0;
        while (looks < kForever && patience.next(looks % 2 == 0 ? kHeld : kOther) == Step::wait)
            ++looks;
        QVERIFY(looks < 1000);
    }

    void menuGetsEscapeOnlyOnceNothingIsHeld()
    {
        GrabPatience patience;
        QCOMPARE(patience.next({.taken = true, .held = true, .menus = {7}}), Step::wait);
        QCOMPARE(patience.next(kMenu), Step::pressEscape);
    }
};

BRINDLECAM_TEST(TestGrabPatience);

} // namespace brindlecam

#include "tst_grabpatience.moc"
