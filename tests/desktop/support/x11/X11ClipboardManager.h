#pragma once

#include "desktop/support/ClipboardManager.h"
#include "desktop/support/x11/Connection.h"

#include <atomic>
#include <mutex>
#include <thread>

namespace brindlecam::desktop {

class X11Clipboard;

/// Either looks on at every new owner of CLIPBOARD, or owns CLIPBOARD_MANAGER and answers
/// SAVE_TARGETS.
class X11ClipboardManager final : public ClipboardManager {
public:
    /// Returns once it serves.
    X11ClipboardManager(const QString& display, KeepsBy way);
    ~X11ClipboardManager() override;

    [[nodiscard]] QByteArrayList kept() const override;
    [[nodiscard]] int secrets() const override { return m_secrets; }

private:
    [[nodiscard]] bool wasHanded() const override { return m_handed; }

    void serve(const QString& display, KeepsBy way);
    void keep(X11Clipboard& clipboard);
    void answer(const Connection& connection, xcb_window_t window, X11Clipboard& clipboard,
                const xcb_selection_request_event_t& request);

    std::atomic<bool> m_serves = false;
    std::atomic<bool> m_ends = false;
    std::atomic<bool> m_handed = false;
    std::atomic<int> m_secrets = 0;
    mutable std::mutex m_mutex;
    QByteArrayList m_kept; ///< under m_mutex
    std::thread m_thread;
};

} // namespace brindlecam::desktop
