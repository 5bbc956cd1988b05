#pragma once

#include "pictures/Rendered.h"
#include "platform/Pasteboard.h"

#include <QObject>
#include <QRect>

#include <functional>
#include <memory>
#include <vector>

namespace brindlecam {

class Displays;
class Panels;
class PinnedCapture;
class Toast;

/// Every pin on the screen. Nothing but the user closes one, and there may be any number. Main
/// thread; borrows all it works with.
class PinnedCaptures final {
public:
    PinnedCaptures(Panels& panels, Displays& displays, Toast& toast);
    ~PinnedCaptures();

    /// Puts the picture on the clipboard; `done` receives what became of it.
    std::function<void(const Rendered& picture, std::function<void(ClipboardFate)> done)> onCopy;
    /// Asks the user where the picture is to be saved.
    std::function<void(const Rendered& picture)> onSave;

    /// Opens a pin that covers exactly this rectangle (native pixels of the global desktop). A
    /// picture that could not be made opens none.
    void pin(const Rendered& picture, const QRect& native);

    /// The open pins in the order of their creation.
    [[nodiscard]] const std::vector<std::unique_ptr<PinnedCapture>>& open() const { return m_open; }

private:
    /// Brings back pins that a change of the displays has left out of reach.
    void stayReachable();
    void copy(PinnedCapture& pin);
    void dismiss(const PinnedCapture& pin);

    Panels& m_panels;
    Displays& m_displays;
    Toast& m_toast;
    std::vector<std::unique_ptr<PinnedCapture>> m_open;
    QObject m_context; ///< ends our listening
};

} // namespace brindlecam
