#pragma once

#include "desktop/support/DesktopTest.h"
#include "desktop/support/HotKeys.h"
#include "desktop/support/Pictures.h"

#include <QImage>
#include <QStringList>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace brindlecam::desktop {

/// Base of the tests that take pictures with the real program: what a person does with it and sees
/// of it. Rectangles are native pixels of the whole screen. A verb that answers waits until the
/// answer is yes, as long as patience lasts, and is false when it never was.
class CaptureTest : public DesktopTest {
    Q_OBJECT

protected:
    /// A desktop with a wallpaper on which every shift by a pixel shows.
    void usePatternedDesktop(const DesktopOptions& options = {});
    /// A window full of coarsePattern(), once it is seen.
    [[nodiscard]] std::unique_ptr<ClientWindow> openSample(const QRect& pixels,
                                                           WindowKind kind = WindowKind::normal);

    // Windows of other programs.
    /// The window manager has given this window the focus and drawn its frame so.
    [[nodiscard]] bool becomesActive(const ClientWindow& window);
    /// This window has the keyboard.
    [[nodiscard]] bool getsFocus(const ClientWindow& window);
    /// Puts the person to work in this window, which has just been opened, as the desktop can.
    [[nodiscard]] bool worksIn(ClientWindow& window);

    // The program, and how it is reached.
    /// Starts it and waits until both hot keys are its own; ends the test run otherwise.
    void startProgram(const QStringList& arguments = {});
    /// Both hot keys are somebody's, and the overlays are made ready.
    [[nodiscard]] bool hotKeysAreTaken();
    /// Presses and lets go of Shift, Super and this key, once nobody has taken the keyboard: after
    /// a session the program holds it until the keys of that are up.
    void pressHotKey(Qt::Key key);
    /// The same whoever has the keyboard.
    void pressHotKeyAtOnce(Qt::Key key) { input().chord(hotKey(key)); }

    // A session.
    /// Presses the area hot key and waits until the session is ready.
    [[nodiscard]] bool openArea(std::size_t overlayCount = 1);
    /// So many overlays are painted, one of them has the keyboard, and Escape is the program's.
    [[nodiscard]] bool sessionIsReady(std::size_t overlayCount = 1);
    /// The same but for Escape, which a program without hot keys does not take.
    [[nodiscard]] bool overlaysAreUp(std::size_t overlayCount = 1);
    /// Drags over exactly this area, from its upper left corner.
    void select(const QRect& area);
    /// No overlay can be seen, and Escape is everybody's again.
    [[nodiscard]] bool sessionIsOver();

    // Controls, by name.
    /// Where the program shows this control; empty when it never comes.
    [[nodiscard]] QRect placeOf(const char* name, std::optional<ControlKind> kind = std::nullopt);
    /// Presses the button of this name as soon as it is shown; false when it never is, or lies off
    /// the screen.
    [[nodiscard]] bool press(const char* name);

    // The program's windows: those that can be seen now, the lowest first.
    [[nodiscard]] std::vector<SeenWindow> overlays() { return shown(Role::overlay); }
    /// The countdown is one, too.
    [[nodiscard]] std::vector<SeenWindow> toasts() { return shown(Role::toast); }
    [[nodiscard]] std::vector<SeenWindow> dialogs() { return shown(Role::dialog); }
    [[nodiscard]] std::vector<SeenWindow> pins() { return shown(Role::pin); }
    [[nodiscard]] std::vector<SeenWindow> menus() { return shown(Role::menu); }

    // What becomes of them.
    [[nodiscard]] bool programHasKeyboard();
    [[nodiscard]] bool nothingIsShown();
    [[nodiscard]] bool toastComes();
    [[nodiscard]] bool toastIsGone();
    /// A toast says this; one that was waited for before does not count.
    [[nodiscard]] bool toastSays(const QString& message);
    /// There is one dialog.
    [[nodiscard]] bool dialogOpens();
    [[nodiscard]] bool dialogsAreGone();
    [[nodiscard]] bool dialogHasKeyboard();
    /// Presses Escape until no menu is open. A menu may be seen before it has the keyboard; a key
    /// too many would act on what lies beneath it, so the next one waits for an answer.
    [[nodiscard]] bool escapeMenu();

    // Where pictures go.
    /// What another program would paste now; null when there is no picture.
    [[nodiscard]] QImage pasted();
    /// Exactly this picture is on the clipboard.
    [[nodiscard]] bool isPasted(const QImage& expected);
    /// Whether somebody offers anything on the clipboard now.
    [[nodiscard]] bool clipboardIsTaken();
    /// Full paths of the pictures that are in the captures folder and in the history now, oldest
    /// name first. What is still being written is none.
    [[nodiscard]] QStringList captures();
    [[nodiscard]] QStringList history();
    /// Names of all files that are in a folder now, whatever they are.
    [[nodiscard]] static QStringList filesIn(const QString& folder);
    /// The picture in a folder that holds nothing but this one file now; null when it does not
    /// decode, or where there is any other file.
    [[nodiscard]] static QImage onlyPictureIn(const QString& folder);
    /// The folder holds nothing but this picture.
    [[nodiscard]] bool isOnlyCapture(const QImage& expected);
    [[nodiscard]] bool isOnlyInHistory(const QImage& expected);

private:
    [[nodiscard]] std::vector<SeenWindow> shown(Role role);

    std::pair<qint64, WindowId> m_lastToast; ///< process and window
};

} // namespace brindlecam::desktop
