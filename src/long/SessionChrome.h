#pragma once

#include "base/ScreenInfo.h"
#include "notices/WindowTip.h"

#include <QColor>
#include <QRect>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace brindlecam {

class Activity;
class SessionFrame;
class SessionPanel;
class TakenKey;
struct Platform;

/// What the user sees and touches while a long capture runs: the frame around the captured
/// rectangle, the panel with what it is at, and Escape, Return and keypad Enter, whichever program
/// has the keyboard. One for all of its owner's sessions, one after the other. Main thread; borrows
/// the ports and the activity.
class SessionChrome final {
public:
    /// Rectangles are native pixels of the global desktop.
    struct Session {
        QRect captured;
        ScreenInfo screen; ///< that with the rectangle
        QString status;
        QString doneTitle;
        QColor color; ///< of the frame
        // Either may close the chrome, and end it.
        std::function<void()> onDone;   ///< the done button, Return or keypad Enter
        std::function<void()> onCancel; ///< "Cancelar" or Escape
    };

    SessionChrome(Platform& platform, const Activity& activity);
    ~SessionChrome();
    SessionChrome(const SessionChrome&) = delete;
    SessionChrome& operator=(const SessionChrome&) = delete;

    /// Shows frame and panel and takes the keys. Those that the system refuses are left out: the
    /// buttons are always there. What was shown before goes without a callback.
    void show(Session session);
    /// What the session is at from now on; nothing happens while none is shown.
    void setText(const QString& status);
    /// Takes all of it off the screen, gives the keys back and forgets the callbacks. As often as
    /// wanted, from within a callback, too.
    void close();

    /// Takes the panel off the screen where it lies over a part of the captured rectangle, for who
    /// can't leave it out of what is captured. It stays where no key would end the session. Whether
    /// it has gone.
    bool withdrawPanel();

    [[nodiscard]] bool isShown() const { return m_frame != nullptr; }
    /// What the panel says; empty while none is shown.
    [[nodiscard]] QString status() const;

private:
    void showFrame(const QRect& native);
    void showPanel(const QRect& native);
    void takeKeys();
    void removePanel();
    void done();
    void cancel();

    Platform& m_platform;
    WindowTip m_tip;
    Session m_session;
    std::unique_ptr<SessionFrame> m_frame;
    std::unique_ptr<SessionPanel> m_panel;
    bool m_panelInside = false; ///< it lies over a part of the captured rectangle
    std::vector<std::unique_ptr<TakenKey>> m_keys;
};

} // namespace brindlecam
