#include "SettingsFixture.h"
#include "settings/ShortcutSettings.h"
#include "settings/WrappedText.h"
#include "support/TestCase.h"

namespace brindlecam {

using test::SettingsFixture;

namespace {

constexpr Qt::KeyboardModifiers kShiftSuperHeld = Qt::ShiftModifier | Qt::MetaModifier;

QString shownBy(const SettingsFixture& desk, CaptureAction action)
{
    return desk.recorder(action).shown();
}

/// What the warning says; empty where there is none.
QString warning(const SettingsFixture& desk)
{
    const WrappedText& label = desk.controller.window()->shortcuts().warning();
    return label.isVisible() ? label.text() : QString();
}

} // namespace

class TestShortcutSettings final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void showsTheShortcutsAsTheyAreStored()
    {
        SettingsFixture desk;
        desk.prefs.setCombo(std::nullopt, CaptureAction::fullScreen);
        desk.prefs.setCombo(KeyCombo{105, 0, QStringLiteral("F13")}, CaptureAction::recents);
        desk.open();
        QCOMPARE(shownBy(desk, CaptureAction::area), QStringLiteral("Mayús+Super+9"));
        QCOMPARE(shownBy(desk, CaptureAction::fullScreen), QStringLiteral("Sin atajo"));
        QCOMPARE(shownBy(desk, CaptureAction::recents), QStringLiteral("F13"));
        QCOMPARE(warning(desk), QString());
    }

    void hotKeysAreReleasedWhileOneIsRecorded()
    {
        SettingsFixture desk;
        desk.open();
        desk.recorder(CaptureAction::area).startRecording();
        QCOMPARE(desk.host.releases, 1);
        QCOMPARE(desk.host.reloads, 0);
        QTest::keyClick(&desk.recorder(CaptureAction::area), Qt::Key_Escape);
        QCOMPARE(desk.host.reloads, 1);
        QCOMPARE(desk.prefs.combo(CaptureAction::area), defaultCombo(CaptureAction::area));
    }

    void aNewShortcutIsStoredAndTaken()
    {
        SettingsFixture desk;
        desk.open();
        desk.record(CaptureAction::recents, Qt::Key_5, kShiftSuperHeld);
        QCOMPARE(desk.prefs.combo(CaptureAction::recents),
                 (KeyCombo{23, shiftModifier | commandModifier, QStringLiteral("⇧⌘5")}));
        QVERIFY(desk.host.reloads > 0);
        QCOMPARE(warning(desk), QString());
    }

    void aShortcutThatAnotherActionHasIsRefused()
    {
        SettingsFixture desk;
        desk.open();
        desk.record(CaptureAction::recents, Qt::Key_9, kShiftSuperHeld);
        QCOMPARE(warning(desk), QStringLiteral("Mayús+Super+9 ya se usa para “Capturar área”."));
        QCOMPARE(shownBy(desk, CaptureAction::recents), QStringLiteral("Mayús+Super+0"));
        QVERIFY(!desk.defaults.contains(QStringLiteral("hotkey.recents")));
        // Hot keys that are taken again have nothing to say over it.
        desk.controller.hotKeysAnswered();
        QVERIFY(!warning(desk).isEmpty());
        desk.record(CaptureAction::recents, Qt::Key_5, kShiftSuperHeld);
        QCOMPARE(warning(desk), QString());
    }

    void theOwnShortcutOnceMoreIsNoDuplicate()
    {
        SettingsFixture desk;
        desk.open();
        desk.record(CaptureAction::area, Qt::Key_9, kShiftSuperHeld);
        QCOMPARE(warning(desk), QString());
        QCOMPARE(shownBy(desk, CaptureAction::area), QStringLiteral("Mayús+Super+9"));
    }

    void aShortcutThatWasRemovedIsFreeForOthers()
    {
        SettingsFixture desk;
        desk.open();
        desk.record(CaptureAction::area, Qt::Key_Backspace);
        QVERIFY(!desk.prefs.combo(CaptureAction::area));
        QCOMPARE(shownBy(desk, CaptureAction::area), QStringLiteral("Sin atajo"));
        desk.record(CaptureAction::recents, Qt::Key_9, kShiftSuperHeld);
        QCOMPARE(shownBy(desk, CaptureAction::recents), QStringLiteral("Mayús+Super+9"));
    }

    void whatTheSystemRefusesIsNamedInTheOrderOfTheAlphabet()
    {
        SettingsFixture desk;
        desk.host.failed = {CaptureAction::area, CaptureAction::recents, CaptureAction::fullScreen};
        desk.open();
        QCOMPARE(warning(desk),
                 QStringLiteral("No se pudo registrar el atajo de: Capturar pantalla completa, "
                                "Capturar área, Capturas recientes. Probablemente lo usa otra app; "
                                "elige otra combinación."));
        desk.host.failed = {CaptureAction::area};
        desk.controller.hotKeysAnswered();
        QCOMPARE(warning(desk),
                 QStringLiteral("No se pudo registrar el atajo de: Capturar área. Probablemente lo "
                                "usa otra app; elige otra combinación."));
        desk.host.failed.clear();
        desk.controller.hotKeysAnswered();
        QCOMPARE(warning(desk), QString());
    }

    void aRefusedShortcutStaysStored()
    {
        SettingsFixture desk;
        desk.open();
        desk.host.failed = {CaptureAction::area};
        desk.record(CaptureAction::area, Qt::Key_5, kShiftSuperHeld);
        QVERIFY(warning(desk).contains(QStringLiteral("Capturar área")));
        QCOMPARE(desk.prefs.combo(CaptureAction::area)->display, QStringLiteral("⇧⌘5"));
        QCOMPARE(shownBy(desk, CaptureAction::area), QStringLiteral("Mayús+Super+5"));
    }
};

BRINDLECAM_TEST(TestShortcutSettings);

} // namespace brindlecam

#include "tst_shortcutsettings.moc"
