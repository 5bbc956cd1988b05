#include "DelegateDesk.h"
#include "settings/ShortcutRecorder.h"
#include "settings/WrappedText.h"
#include "support/TestCase.h"

#include <QMenu>

namespace brindlecam {

using test::DelegateDesk;

/// The settings window and the hot keys, which are the shell's.
class TestShellSettings final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theSettingsOpenAndTheirRecordersHaveTheKeysToThemselves()
    {
        DelegateDesk desk;
        desk.delegate.reloadHotKeys();
        const std::size_t bound = desk.hotKeys.registered.size();
        desk.delegate.showSettings();
        SettingsWindow* const window = desk.delegate.settings().window();
        QVERIFY(window && window->isVisible());
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        ShortcutRecorder& recorder = window->shortcuts().recorder(CaptureAction::area);
        recorder.startRecording();
        QVERIFY(desk.hotKeys.registered.empty());
        QTest::keyClick(&recorder, Qt::Key_5, Qt::ControlModifier);
        QCOMPARE(desk.hotKeys.registered.size(), bound);
        QVERIFY(desk.hotKeys.registered.contains({23, controlModifier}));
        const QList<QAction*> items = desk.delegate.menu().menu().actions();
        QCOMPARE(items.at(0)->text(), QStringLiteral("Capturar área\tCtrl+5"));
    }

    void theSettingsGoWhenTheProgramEnds()
    {
        DelegateDesk desk;
        desk.delegate.showSettings();
        desk.delegate.quit();
        QVERIFY(!desk.delegate.settings().window()->isVisible());
        QTRY_COMPARE(desk.activity.stage, Activity::Stage::left);
    }

    void theSettingsSayWhichKeysAreRefusedWheneverThatIsKnown()
    {
        DelegateDesk desk;
        desk.hotKeys.waits = true;
        desk.hotKeys.heldByOthers.insert({25, shiftModifier | commandModifier});
        desk.delegate.reloadHotKeys();
        desk.delegate.showSettings();
        WrappedText& warning = desk.delegate.settings().window()->shortcuts().warning();
        QVERIFY(!warning.isVisible());
        desk.hotKeys.answer();
        QVERIFY(warning.isVisible());
        QVERIFY(warning.text().contains(QStringLiteral("Capturar área")));
    }

    void aRecorderThatRecordsAtTheEndDoesNotOutliveTheKeys()
    {
        auto desk = std::make_unique<DelegateDesk>();
        desk->delegate.reloadHotKeys();
        desk->delegate.showSettings();
        const QPointer<SettingsWindow> window(desk->delegate.settings().window());
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        ShortcutRecorder& recorder = window->shortcuts().recorder(CaptureAction::area);
        recorder.startRecording();
        QVERIFY(recorder.recording());
        desk.reset(); // sanitizers would tell of a word to a window that is half gone
        QVERIFY(!window);
    }
};

BRINDLECAM_TEST(TestShellSettings);

} // namespace brindlecam

#include "tst_shellsettings.moc"
