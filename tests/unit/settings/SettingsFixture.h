#pragma once

#include "history/History.h"
#include "notices/Alerts.h"
#include "pictures/PngWriter.h"
#include "platform/null/NullPlatform.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "settings/BehaviourSettings.h"
#include "settings/FolderRow.h"
#include "settings/LoginBox.h"
#include "settings/MarkerSettings.h"
#include "settings/PrivacySettings.h"
#include "settings/SettingsHost.h"
#include "settings/SettingsWindowController.h"
#include "settings/ShortcutRecorder.h"
#include "support/FakeDisplays.h"
#include "support/FakeHotKeys.h"
#include "support/FakeLoginItem.h"
#include "support/FakePanels.h"
#include "support/GatedExecutor.h"
#include "support/Install.h"
#include "support/OpenAlert.h"

#include <QCheckBox>
#include <QImage>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

namespace brindlecam::test {

/// Notes what the settings ask of the shell.
struct FakeSettingsHost final : SettingsHost {
    int reloads = 0;
    int releases = 0;
    int foldersOpened = 0;
    std::set<CaptureAction> failed;
    bool looksForUpdates = true;

    void reloadHotKeys() override { ++reloads; }
    void releaseHotKeys() override { ++releases; }
    [[nodiscard]] const std::set<CaptureAction>& failedHotKeys() const override { return failed; }
    [[nodiscard]] bool offersUpdates() const override { return looksForUpdates; }
    void openCapturesFolder() override { ++foldersOpened; }
};

/// The settings window on one screen of a world of fakes; all work is done at once.
struct SettingsFixture {
    QTemporaryDir folder;
    Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
    Prefs prefs{defaults};
    Platform platform = makeNullPlatform();
    FakeDisplays& displays = install<FakeDisplays>(platform.displays);
    FakeHotKeys& keyboard = install<FakeHotKeys>(platform.hotKeys);
    FakeLoginItem& loginItem = install<FakeLoginItem>(platform.loginItem);
    FakePanels& panels = install<FakePanels>(platform.panels);
    Alerts alerts{panels};
    FakeSettingsHost host;
    QDateTime clock{QDate(2026, 3, 14), QTime(9, 26, 53)};
    History history{{folder.filePath(QStringLiteral("historia")), {}}, [this] { return clock; }};
    SettingsWindowController controller{
        {platform, prefs, history, alerts, host, [](const std::function<void()>& job) { job(); }}};

    SettingsFixture()
    {
        displays.all = {
            {QStringLiteral("A"), QRect(0, 0, 1920, 1080), 1, QRect(0, 40, 1920, 1040)},
            {QStringLiteral("B"), QRect(1920, 0, 2880, 1800), 2, QRect(1920, 0, 2880, 1800)}};
        displays.pointerAt = QPoint(450, 50);
        defaults.setString(QStringLiteral("saveFolder"),
                           folder.filePath(QStringLiteral("capturas")));
    }

    void addToHistory(int captures)
    {
        QImage image(30, 20, QImage::Format_RGB32);
        image.fill(Qt::red);
        for (int i = 0; i < captures; ++i) {
            history.add(PngWriter::encode(image, {.cancelled = {}}), QStringLiteral("png"));
            clock = clock.addSecs(1);
        }
    }

    /// Opens the window, and waits until everything in it has been found out.
    SettingsWindow& open()
    {
        controller.show();
        controller.window()->activateWindow();
        [&] { QVERIFY(QTest::qWaitForWindowActive(controller.window())); }();
        settle();
        return *controller.window();
    }
    void settle() const
    {
        sendAllPostedEvents();
        loginItem.answer();
        sendAllPostedEvents();
    }
    [[nodiscard]] ShortcutRecorder& recorder(CaptureAction action) const
    {
        return controller.window()->shortcuts().recorder(action);
    }
    /// Has the recorder of this action record, and presses the key.
    void record(CaptureAction action, Qt::Key key, Qt::KeyboardModifiers held = {}) const
    {
        recorder(action).startRecording();
        QTest::keyClick(&recorder(action), key, held);
    }

    /// The alert that was shown last, if one is open.
    [[nodiscard]] QMessageBox* question() const { return openAlert(panels); }
    void answer(const char* title) const { answerAlert(panels, title); }
};

} // namespace brindlecam::test
