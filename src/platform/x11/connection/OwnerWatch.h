#pragma once

#include <QAbstractNativeEventFilter>

#include <xcb/xcb.h>

#include <functional>

namespace brindlecam {

/// Whether somebody owns a selection by which a program of its kind announces itself, as trays and
/// compositors do. Main thread; it listens, nothing is asked again. Without XFixes it knows only
/// what was so at first.
class OwnerWatch final : private QAbstractNativeEventFilter {
public:
    /// `changed` runs after each change of the owner, also from one to another.
    OwnerWatch(const char* selection, std::function<void()> changed);
    ~OwnerWatch() override;

    [[nodiscard]] bool owned() const { return m_owner != XCB_WINDOW_NONE; }

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

    xcb_atom_t m_selection;
    std::function<void()> m_changed;
    int m_ownerChangedEvent; ///< event code; negative without XFixes
    xcb_window_t m_owner = XCB_WINDOW_NONE;
};

} // namespace brindlecam
