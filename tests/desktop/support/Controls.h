#pragma once

#include "desktop/support/AccessTree.h"
#include "desktop/support/Desktop.h"
#include "desktop/support/ProgramUnderTest.h"

#include <QRect>
#include <QString>

#include <optional>
#include <vector>

namespace brindlecam::desktop {

enum class ControlKind : std::uint8_t { button, menuItem, slider, text, other };

/// A control that the program shows, in its own words.
struct Control {
    QString name;
    ControlKind kind = ControlKind::other;
    bool enabled = false;
    bool on = false; ///< pressed in or checked
    bool focused = false;
    bool inActiveWindow = false;
    QRect pixels; ///< native pixels of the whole screen
};

/// Finds what the running program shows by its name, as assistive technology does: for desktops
/// with Accessibility::on. A name counts up to its first bracket, where names tell keys: "Copiar"
/// is called "Copiar (Ctrl+C o Enter)".
class Controls final {
public:
    /// On a desktop with Accessibility::on.
    Controls(const ProgramUnderTest& program, Desktop& desktop);

    /// Waits for a control of this name, and of this kind if any is given. Of several, it is one in
    /// the active window. None when it never comes: then all that is shown is told.
    [[nodiscard]] std::optional<Control> find(const QString& name,
                                              std::optional<ControlKind> kind = std::nullopt);
    /// The same as it is right now.
    [[nodiscard]] std::optional<Control> look(const QString& name,
                                              std::optional<ControlKind> kind = std::nullopt);
    /// Everything that is shown.
    [[nodiscard]] std::vector<Control> shown();

private:
    const ProgramUnderTest& m_program;
    Desktop& m_desktop;
    std::optional<AccessTree> m_tree; ///< of the process that was looked at last
};

} // namespace brindlecam::desktop
