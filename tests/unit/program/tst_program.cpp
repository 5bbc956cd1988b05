#include "Program.h"
#include "platform/null/NullPlatform.h"
#include "support/TestCase.h"

#include <QStandardPaths>
#include <QTemporaryDir>

namespace brindlecam {

class TestProgram final : public test::TestCase {
    Q_OBJECT

private:
    QTemporaryDir m_folder;

private Q_SLOTS:
    void initTestCase()
    {
        for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "HOME"})
            qputenv(variable, m_folder.path().toLocal8Bit());
    }

    void everyCallbackOfABuiltRoomIsFilled()
    {
        Program program(makeNullPlatform(), CaptureFailure::Voice::silent);
        const AppDelegate& delegate = program.delegate();
        QVERIFY(delegate.onArea);
        QVERIFY(delegate.onFullScreen);
        QVERIFY(delegate.onCountdown);
        QVERIFY(delegate.onQuit);
        const StatusMenu& menu = program.menu();
        QVERIFY(menu.onCapture);
        QVERIFY(menu.onCaptureDelayed);
        QVERIFY(menu.onOpenFolder);
        QVERIFY(menu.onAbout);
        QVERIFY(menu.onQuit);
        QVERIFY(menu.isAvailable);
        const HotKeyCenter& keys = program.hotKeyCenter();
        QVERIFY(keys.onPressed);
        QVERIFY(keys.isAvailable);
        QVERIFY(keys.onReloaded);
        const CaptureController& captures = program.captureController();
        QVERIFY(captures.onPin);
        QVERIFY(captures.onScreensChanged);
        const PinnedCaptures& pins = program.pinnedCaptures();
        QVERIFY(pins.onCopy);
        QVERIFY(pins.onSave);
    }

    void actionsAreAvailableExactlyWhenTheirRoomIsBuilt()
    {
        Program program(makeNullPlatform(), CaptureFailure::Voice::silent);
        QVERIFY(program.delegate().isAvailable(CaptureAction::area));
        QVERIFY(program.delegate().isAvailable(CaptureAction::fullScreen));
        QVERIFY(!program.delegate().isAvailable(CaptureAction::recents));
        QVERIFY(!program.hotKeyCenter().isAvailable(CaptureAction::recents));
    }

    void aCaptureWithoutScreensEndsByItself()
    {
        Program program(makeNullPlatform(), CaptureFailure::Voice::silent);
        program.start(CaptureAction::area);
        QVERIFY(!program.captureController().busy());
    }
};

BRINDLECAM_TEST(TestProgram);

} // namespace brindlecam

#include "tst_program.moc"
