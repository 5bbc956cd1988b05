#pragma once

#include "settings/SettingsWindow.h"

#include <memory>

namespace brindlecam {

/// The one settings window: made when it is first asked for, and kept. Main thread.
class SettingsWindowController final {
public:
    explicit SettingsWindowController(SettingsWindow::Rooms rooms);
    ~SettingsWindowController();

    /// Brings it to the front, in the middle of the screen with the pointer, with what is stored by
    /// now.
    void show();
    /// Takes it off the screen, if it is there.
    void close();
    /// The system has answered about the hot keys.
    void hotKeysAnswered();

    /// Null before it was first asked for.
    [[nodiscard]] SettingsWindow* window() const { return m_window.get(); }

private:
    void make();

    const SettingsWindow::Rooms m_rooms;
    std::unique_ptr<SettingsWindow> m_window;
};

} // namespace brindlecam
