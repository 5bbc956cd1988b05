#pragma once

#include "desktop/support/DesktopTest.h"
#include "desktop/support/Pictures.h"

#include <QImage>
#include <QStringList>

#include <optional>
#include <vector>

namespace brindlecam::desktop {

/// Base of the tests that take pictures with the real program: its hot keys, its overlays and where
/// its pictures go. Rectangles are native pixels of the whole screen.
class CaptureTest : public DesktopTest {
    Q_OBJECT

protected:
    static constexpr Qt::Key kAreaKey = Qt::Key_9;
    static constexpr Qt::Key kFullScreenKey = Qt::Key_8;

    /// A desktop with a wallpaper on which every shift by a pixel shows.
    void usePatternedDesktop(const DesktopOptions& options = {});

    /// Starts the program and waits until both capture hot keys are its own.
    void startProgram(const QStringList& arguments = {});
    /// Presses and lets go of Shift, Super and this key, once nobody has taken the keyboard: after
    /// a session the program holds it until the keys of that are up.
    void pressHotKey(Qt::Key key);

    /// Presses the area hot key and waits until the session is ready; false when it never was.
    [[nodiscard]] bool openArea();
    /// Waits until so many overlays are painted and one of them has the keyboard.
    [[nodiscard]] bool sessionIsReady(std::size_t overlayCount = 1);
    /// Where the program shows the control of this name; waits for it, and is empty when it never
    /// comes.
    [[nodiscard]] QRect placeOf(const char* name, std::optional<ControlKind> kind = std::nullopt);
    /// Presses the button of this name as soon as it is shown; false when it never is, or lies off
    /// the screen.
    [[nodiscard]] bool press(const char* name);
    /// Waits until no overlay can be seen.
    [[nodiscard]] bool sessionIsOver();
    [[nodiscard]] std::vector<SeenWindow> overlays();
    [[nodiscard]] std::vector<SeenWindow> toasts();
    [[nodiscard]] std::vector<SeenWindow> dialogs();
    /// Toasts and the countdown are of one kind.
    [[nodiscard]] bool toastIsShown() { return !toasts().empty(); }
    /// Waits until no toast can be seen.
    [[nodiscard]] bool toastIsGone();

    /// Waits until the window manager has given this window the focus and drawn its frame so.
    [[nodiscard]] bool becomesActive(const ClientWindow& window);

    /// The clipboard's PNG, null when there is none.
    [[nodiscard]] QImage pasted();
    /// Waits until exactly this picture is on the clipboard.
    [[nodiscard]] bool isPasted(const QImage& expected);
    /// Whether somebody offers anything on the clipboard.
    [[nodiscard]] bool clipboardIsTaken();

    /// Full paths of the files in the captures folder and in the history, oldest name first.
    [[nodiscard]] QStringList captures();
    [[nodiscard]] QStringList history();
    /// Waits until the folder holds exactly one picture, and that is this one.
    [[nodiscard]] bool isOnlyCapture(const QImage& expected);
    [[nodiscard]] bool isOnlyInHistory(const QImage& expected);
};

} // namespace brindlecam::desktop
