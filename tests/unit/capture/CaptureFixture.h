#pragma once

#include "base/KeyCodes.h"
#include "canvas/CanvasView.h"
#include "capture/CaptureController.h"
#include "capture/CaptureResults.h"
#include "capture/Countdown.h"
#include "capture/LongCaptures.h"
#include "capture/Output.h"
#include "capture/ScreenCover.h"
#include "history/History.h"
#include "notices/Activity.h"
#include "notices/Alerts.h"
#include "notices/Toast.h"
#include "pins/PinnedCaptures.h"
#include "platform/null/NullPlatform.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "support/FakeCompositing.h"
#include "support/FakeDisplays.h"
#include "support/FakeFrontApplication.h"
#include "support/FakeGrabber.h"
#include "support/FakeHotKeys.h"
#include "support/FakeInputGrabs.h"
#include "support/FakePanels.h"
#include "support/FakePasteboard.h"
#include "support/FakePins.h"
#include "support/FakeTextRecognizer.h"
#include "support/Install.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <set>
#include <utility>
#include <vector>

namespace brindlecam::test {

// Two screens side by side, the primary one on the left.
inline const ScreenInfo kLeft{QStringLiteral("LEFT"), QRect(0, 0, 400, 300), 1,
                              QRect(0, 0, 400, 300)};
inline const ScreenInfo kRight{QStringLiteral("RIGHT"), QRect(400, 0, 300, 200), 1,
                               QRect(400, 0, 300, 200)};

inline Rendered onePicture(QColor colour)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(colour);
    return {image, QSizeF(40, 30)};
}

/// Takes the kinds it is told to, and notes on which screens.
class NotedLongCaptures final : public LongCaptures {
public:
    std::set<LongCapture> kinds;
    std::vector<std::pair<LongCapture, QString>> begun; ///< with the screen's id

    [[nodiscard]] bool available(LongCapture kind) const override { return kinds.contains(kind); }
    void start(LongCapture kind, const QRect&, const ScreenInfo& screen) override
    {
        begun.emplace_back(kind, screen.id);
    }
    void cancel() override { begun.clear(); }
};

/// Notes when it had to leave, and says whether it was there.
class NotedCover final : public ScreenCover {
public:
    bool there = false;
    std::vector<Focus> left;

    bool leave(Focus focus) override
    {
        left.push_back(focus);
        return std::exchange(there, false);
    }
};

/// The controller in a world of fakes in which all work is done at once.
struct CaptureFixture {
    QTemporaryDir folder;
    Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
    Prefs prefs{defaults};
    Platform platform = makeNullPlatform();
    test::FakeDisplays& displays = install<test::FakeDisplays>(platform.displays);
    test::FakeGrabber& grabber = install<test::FakeGrabber>(platform.grabber);
    test::FakeHotKeys& hotKeys = install<test::FakeHotKeys>(platform.hotKeys);
    test::FakeInputGrabs& inputGrabs = install<test::FakeInputGrabs>(platform.inputGrabs);
    test::FakePanels& panels = install<test::FakePanels>(platform.panels);
    test::FakePins& pinWindows = install<test::FakePins>(platform.pins);
    test::FakeCompositing& compositing = install<test::FakeCompositing>(platform.compositing);
    test::FakePasteboard& pasteboard = install<test::FakePasteboard>(platform.pasteboard);
    test::FakeTextRecognizer& recognizer =
        install<test::FakeTextRecognizer>(platform.textRecognizer);
    test::FakeFrontApplication& front =
        install<test::FakeFrontApplication>(platform.frontApplication);
    Toast toast{displays, panels, compositing};
    Alerts alerts{panels};
    Activity activity;
    CaptureFailure failure{*platform.captureAccess, alerts, defaults,
                           CaptureFailure::Voice::alerts};
    History history{{folder.filePath(QStringLiteral("historia"))}};
    Output output{pasteboard, history, prefs, [](const std::function<void()>& job) { job(); }};
    CaptureResults results{prefs, output, toast, alerts};
    static constexpr std::chrono::milliseconds kLastPatience{200};
    Countdown countdown{
        displays, panels, compositing, {.tick = std::chrono::milliseconds(30), .handOff = {}}};
    PinnedCaptures pins{{panels, pinWindows, displays, compositing}, toast, activity, results};
    NotedLongCaptures longCaptures;
    NotedCover cover;
    CaptureController controller{{platform, prefs, results, toast, alerts, activity, failure,
                                  countdown, pins, longCaptures, cover, kLastPatience}};

    CaptureFixture()
    {
        defaults.setString(QStringLiteral("saveFolder"),
                           folder.filePath(QStringLiteral("capturas")));
        displays.all = {kLeft, kRight};
        displays.pointerAt = QPoint(450, 50);
    }

    [[nodiscard]] std::vector<OverlayWindow*> overlays() const
    {
        std::vector<OverlayWindow*> found;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* overlay = qobject_cast<OverlayWindow*>(widget);
            if (overlay && overlay->isVisible())
                found.push_back(overlay);
        }
        std::ranges::sort(found, {}, [](const OverlayWindow* window) {
            return window->coveredScreen().native.x();
        });
        return found;
    }
    [[nodiscard]] CanvasView& canvas(std::size_t index) const
    {
        return *overlays().at(index)->canvas();
    }
    void drag(CanvasView& canvas, QPoint from, QPoint to)
    {
        QTest::mousePress(&canvas, Qt::LeftButton, {}, from);
        QTest::mouseMove(&canvas, to);
        QTest::mouseRelease(&canvas, Qt::LeftButton, {}, to);
    }
    [[nodiscard]] QStringList savedFiles() const
    {
        return QDir(prefs.saveFolder()).entryList(QDir::Files);
    }
    [[nodiscard]] qsizetype kept() const { return history.items().size(); }
    void pressEscape() { hotKeys.press(KeyCodes::kEscape, 0); }
};

} // namespace brindlecam::test
