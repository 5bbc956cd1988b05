#pragma once

#include "desktop/support/PinTest.h"

namespace brindlecam::soak {

/// Who uses the program: a desktop and the verbs that its tests have, for whoever wants to play.
class Person final : public desktop::PinTest {
public:
    static constexpr Qt::Key kArea = kAreaKey;
    static constexpr Qt::Key kFullScreen = kFullScreenKey;

    using CaptureTest::dialogs;
    using CaptureTest::overlays;
    using CaptureTest::press;
    using CaptureTest::pressHotKey;
    using CaptureTest::sessionIsOver;
    using CaptureTest::sessionIsReady;
    using CaptureTest::startProgram;
    using CaptureTest::toastIsGone;
    using CaptureTest::toasts;
    using CaptureTest::usePatternedDesktop;
    using DesktopTest::desktop;
    using DesktopTest::input;
    using DesktopTest::program;
    using DesktopTest::screen;
    using DesktopTest::windows;
    using PinTest::choose;
    using PinTest::doubleClickPin;
    using PinTest::inside;
    using PinTest::menus;
    using PinTest::openMenu;
    using PinTest::pins;

    /// Waits until a toast says this.
    [[nodiscard]] bool reads(const QString& message);
    /// Waits until a dialog has the keyboard.
    [[nodiscard]] bool dialogTakesKeys();
    /// Sends the program a signal, as the kernel or another program would.
    void signalProgram(int number);
};

} // namespace brindlecam::soak
