#include "NotedActions.h"
#include "shell/HotKeyCenter.h"
#include "support/FakeHotKeys.h"
#include "support/TestCase.h"

#include <optional>
#include <set>

namespace brindlecam {

namespace {

constexpr int kShiftCommand = shiftModifier | commandModifier;

/// A list of actions, and a keyboard.
struct KeyDesk : test::NotedActions {
    test::FakeHotKeys keyboard;
    std::optional<HotKeyCenter> made{std::in_place, keyboard, list};
    HotKeyCenter& center = *made;
};

std::set<CaptureAction> everyAction()
{
    return {kAllCaptureActions.begin(), kAllCaptureActions.end()};
}

} // namespace

class TestHotKeyCenter final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyActionIsPerformedByItsOwnKey()
    {
        KeyDesk desk;
        desk.center.reload();
        desk.keyboard.press(28, kShiftCommand);
        desk.keyboard.press(25, kShiftCommand);
        desk.keyboard.press(29, kShiftCommand);
        desk.keyboard.press(25, commandModifier);
        QCOMPARE(desk.run, QStringList({QStringLiteral("fullScreen"), QStringLiteral("area"),
                                        QStringLiteral("recents")}));
        QVERIFY(desk.runFromMenu.isEmpty());
        QVERIFY(desk.center.failed().empty());
    }

    void aKeyAnotherProgramHoldsFailsAloneAndTheOthersWork()
    {
        KeyDesk desk;
        desk.keyboard.heldByOthers.insert({28, kShiftCommand});
        desk.center.reload();
        QCOMPARE(desk.center.failed(), std::set{CaptureAction::fullScreen});
        QCOMPARE(desk.center.bound(), std::set({CaptureAction::area, CaptureAction::recents}));
        desk.keyboard.press(25, kShiftCommand);
        QCOMPARE(desk.run, QStringList(QStringLiteral("area")));

        desk.keyboard.heldByOthers.clear();
        desk.center.reload();
        QVERIFY(desk.center.failed().empty());
        QCOMPARE(desk.center.bound(), everyAction());
    }

    void ofTwoActionsWithOneKeyTheLastIsPerformed()
    {
        KeyDesk desk;
        desk.prefs.setCombo(KeyCombo{105, 0, QStringLiteral("F13")}, CaptureAction::fullScreen);
        desk.prefs.setCombo(KeyCombo{105, 0, QStringLiteral("F13")}, CaptureAction::recents);
        desk.center.reload();
        QVERIFY(desk.center.failed().empty());
        QCOMPARE(desk.center.bound(), everyAction());
        desk.keyboard.press(105, 0);
        QCOMPARE(desk.run.size(), 1);
        QCOMPARE(desk.run.front(), rawValue(kAllCaptureActions.back()));
    }

    void reloadingTwiceLeavesThreeRegistrations()
    {
        KeyDesk desk;
        desk.center.reload();
        desk.center.reload();
        QCOMPARE(desk.keyboard.registered.size(), std::size_t(3));
        QCOMPARE(desk.keyboard.duplicates, 0);
        QVERIFY(desk.center.failed().empty());
    }

    void clearedAndUnreadableShortcutsAreSkippedAndNoFailure()
    {
        KeyDesk desk;
        desk.prefs.setCombo(std::nullopt, CaptureAction::area);
        desk.defaults.setData(QStringLiteral("hotkey.recents"), QByteArray("{]"));
        desk.center.reload();
        QCOMPARE(desk.keyboard.registered.size(), std::size_t(1));
        QCOMPARE(desk.center.bound(), std::set{CaptureAction::fullScreen});
        QVERIFY(desk.center.failed().empty());
    }

    void aShortcutWithoutATextIsNone()
    {
        KeyDesk desk;
        desk.prefs.setCombo(KeyCombo{25, kShiftCommand, QString()}, CaptureAction::area);
        desk.center.reload();
        QVERIFY(!desk.center.bound().contains(CaptureAction::area));
        QVERIFY(!desk.center.failed().contains(CaptureAction::area));
    }

    void aFunctionKeyAloneIsRegistered()
    {
        KeyDesk desk;
        desk.prefs.setCombo(KeyCombo{105, 0, QStringLiteral("F13")}, CaptureAction::area);
        desk.center.reload();
        desk.keyboard.press(105, 0);
        QCOMPARE(desk.run, QStringList(QStringLiteral("area")));
    }

    void actionsThatCannotRunAreNotGrabbed()
    {
        KeyDesk desk;
        desk.cannotRun << QStringLiteral("recents");
        desk.center.reload();
        QCOMPARE(desk.keyboard.registered.size(), std::size_t(2));
        QVERIFY(!desk.center.bound().contains(CaptureAction::recents));
        QVERIFY(desk.center.failed().empty());
    }

    void everythingIsGivenBackForARecorder()
    {
        KeyDesk desk;
        desk.center.reload();
        desk.center.releaseAll();
        QVERIFY(desk.keyboard.registered.empty());
        QVERIFY(desk.center.bound().empty());
        desk.center.reload();
        QCOMPARE(desk.keyboard.registered.size(), std::size_t(3));
        QCOMPARE(desk.center.bound(), everyAction());
    }

    void whatFailedStaysKnownWhileARecorderListens()
    {
        KeyDesk desk;
        desk.keyboard.heldByOthers.insert({28, kShiftCommand});
        desk.center.reload();
        desk.center.releaseAll();
        QCOMPARE(desk.center.failed(), std::set{CaptureAction::fullScreen});
    }

    void theSystemIsToldWhatACommandAndAMenuCallThem()
    {
        KeyDesk desk;
        desk.center.reload();
        QStringList told;
        for (const HotKeyWish& wish : desk.keyboard.wishes)
            told << wish.name + QLatin1Char(' ') + wish.title;
        QStringList expected;
        for (const CaptureAction id : kAllCaptureActions)
            expected << rawValue(id) + QLatin1Char(' ') + title(id);
        QCOMPARE(told, expected);
    }

    void anAnswerThatComesLaterTellsWhatIsBoundAndWhatFailed()
    {
        KeyDesk desk;
        desk.keyboard.waits = true;
        desk.keyboard.heldByOthers.insert({28, kShiftCommand});
        desk.center.reload();
        QVERIFY(desk.center.bound().empty());
        QVERIFY(desk.center.failed().empty());
        desk.keyboard.answer();
        QCOMPARE(desk.center.bound(), std::set({CaptureAction::area, CaptureAction::recents}));
        QCOMPARE(desk.center.failed(), std::set{CaptureAction::fullScreen});
    }

    void anAnswerToASetThatWasReplacedIsNotHeard()
    {
        KeyDesk desk;
        desk.keyboard.waits = true;
        desk.keyboard.heldByOthers.insert({28, kShiftCommand});
        desk.center.reload();
        desk.keyboard.heldByOthers.clear();
        desk.center.reload();
        QCOMPARE(desk.keyboard.awaited(), 1);
        desk.keyboard.answer();
        QVERIFY(desk.center.bound().empty());
        QVERIFY(desk.center.failed().empty());
        desk.keyboard.answer();
        QCOMPARE(desk.center.bound(), everyAction());
        QVERIFY(desk.center.failed().empty());
    }

    void anAnswerThatComesWhileARecorderListensIsNotHeard()
    {
        KeyDesk desk;
        desk.keyboard.waits = true;
        desk.center.reload();
        desk.center.releaseAll();
        desk.keyboard.answer();
        desk.keyboard.answer();
        QVERIFY(desk.center.bound().empty());
    }

    void keysWorkThoughTheAnswerNeverComes()
    {
        KeyDesk desk;
        desk.keyboard.waits = true;
        desk.center.reload();
        desk.center.reload();
        desk.keyboard.press(28, kShiftCommand);
        QCOMPARE(desk.run, QStringList(QStringLiteral("fullScreen")));
        QCOMPARE(desk.keyboard.registered.size(), std::size_t(3));
    }

    void itsEndGivesEverythingBackAndHearsNothingMore()
    {
        KeyDesk desk;
        desk.keyboard.waits = true;
        desk.center.reload();
        desk.made.reset();
        QVERIFY(desk.keyboard.registered.empty());
        QCOMPARE(desk.keyboard.awaited(), 0);
    }
};

BRINDLECAM_TEST(TestHotKeyCenter);

} // namespace brindlecam

#include "tst_hotkeycenter.moc"
