#pragma once

#include "desktop/support/PinTest.h"

#include <functional>
#include <vector>

namespace brindlecam::soak {

/// Who uses the program: a desktop and the verbs that its tests have, for whoever wants to play.
class Person final : public desktop::PinTest {
public:
    using CaptureTest::dialogHasKeyboard;
    using CaptureTest::dialogs;
    using CaptureTest::dialogsAreGone;
    using CaptureTest::menus;
    using CaptureTest::overlays;
    using CaptureTest::placeOf;
    using CaptureTest::press;
    using CaptureTest::pressHotKey;
    using CaptureTest::pressHotKeyAtOnce;
    using CaptureTest::select;
    using CaptureTest::sessionIsOver;
    using CaptureTest::sessionIsReady;
    using CaptureTest::startProgram;
    using CaptureTest::toastIsGone;
    using CaptureTest::toasts;
    using CaptureTest::toastSays;
    using CaptureTest::usePatternedDesktop;
    using DesktopTest::desktop;
    using DesktopTest::input;
    using DesktopTest::program;
    using DesktopTest::screen;
    using DesktopTest::windows;
    using PinTest::choose;
    using PinTest::inside;
    using PinTest::openMenu;

    static constexpr Qt::Key kRecentsKey = Qt::Key_0;

    [[nodiscard]] std::vector<desktop::SeenWindow> pins();
    /// Whose windows are of the same kind.
    [[nodiscard]] static bool isDrawer(const desktop::SeenWindow& window);
    [[nodiscard]] std::vector<desktop::SeenWindow> drawers();
    [[nodiscard]] bool drawerHasKeyboard();
    [[nodiscard]] std::vector<desktop::SeenWindow> settingsWindows();
    [[nodiscard]] bool settingsHaveKeyboard();

    /// Sends the program a signal, as the kernel or another program would.
    void signalProgram(int number);

private:
    [[nodiscard]] bool haveKeyboard(const std::function<std::vector<desktop::SeenWindow>()>& all);
};

} // namespace brindlecam::soak
