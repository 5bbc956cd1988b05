#include "NotedActions.h"
#include "shell/HotKeyCenter.h"
#include "support/FakeHotKeys.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

constexpr int kShiftCommand = shiftModifier | commandModifier;

/// A list of actions, and a keyboard.
struct KeyDesk : test::NotedActions {
    test::FakeHotKeys keyboard;
    HotKeyCenter center{keyboard, list};
};

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
        QVERIFY(desk.center.keys().contains(CaptureAction::area));
        QVERIFY(desk.center.keys().contains(CaptureAction::recents));

        desk.keyboard.heldByOthers.clear();
        desk.center.reload();
        QVERIFY(desk.center.failed().empty());
        QCOMPARE(desk.center.keys().size(), std::size_t(3));
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
        QVERIFY(desk.center.keys().contains(CaptureAction::fullScreen));
        QVERIFY(desk.center.failed().empty());
    }

    void aShortcutWithoutATextIsNone()
    {
        KeyDesk desk;
        desk.prefs.setCombo(KeyCombo{25, kShiftCommand, QString()}, CaptureAction::area);
        desk.center.reload();
        QVERIFY(!desk.center.keys().contains(CaptureAction::area));
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
        QVERIFY(!desk.center.keys().contains(CaptureAction::recents));
        QVERIFY(desk.center.failed().empty());
    }

    void everythingIsGivenBackForARecorder()
    {
        KeyDesk desk;
        desk.center.reload();
        desk.center.releaseAll();
        QVERIFY(desk.keyboard.registered.empty());
        desk.center.reload();
        QCOMPARE(desk.keyboard.registered.size(), std::size_t(3));
    }
};

BRINDLECAM_TEST(TestHotKeyCenter);

} // namespace brindlecam

#include "tst_hotkeycenter.moc"
