#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <atomic>
#include <optional>
#include <thread>

namespace brindlecam::desktop {

/// A clipboard manager: keeps a picture when its owner asks for that before it quits. Serves one
/// request on a thread of its own.
class ClipboardKeeper final {
public:
    /// Returns once it owns CLIPBOARD_MANAGER.
    explicit ClipboardKeeper(const QString& display);
    /// Waits for the request, but not for ever.
    ~ClipboardKeeper();
    ClipboardKeeper(const ClipboardKeeper&) = delete;
    ClipboardKeeper& operator=(const ClipboardKeeper&) = delete;

    /// Waits for the request. The PNG that was handed over, none when nobody asked or nothing came.
    [[nodiscard]] std::optional<QByteArray> kept();

private:
    void serve(const QString& display);

    std::atomic<bool> m_owns = false;
    std::optional<QByteArray> m_kept;
    std::thread m_thread;
};

} // namespace brindlecam::desktop
