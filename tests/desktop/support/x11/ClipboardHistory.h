#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <atomic>
#include <mutex>
#include <thread>

namespace brindlecam::desktop {

class ClipboardReader;

/// A clipboard manager that keeps every picture that comes to the clipboard, without being asked,
/// but those whose owner marks them as a secret. Looks on from a thread of its own.
class ClipboardHistory final {
public:
    /// Returns once it looks on.
    explicit ClipboardHistory(const QString& display);
    ~ClipboardHistory();
    ClipboardHistory(const ClipboardHistory&) = delete;
    ClipboardHistory& operator=(const ClipboardHistory&) = delete;

    /// The PNGs it has kept, oldest first; the same one offered again is not kept twice.
    [[nodiscard]] QByteArrayList kept() const;
    /// How many it has left alone.
    [[nodiscard]] int secrets() const { return m_secrets; }

private:
    void lookOn(const QString& display);
    void keep(ClipboardReader& reader);

    std::atomic<bool> m_looksOn = false;
    std::atomic<bool> m_ends = false;
    std::atomic<int> m_secrets = 0;
    mutable std::mutex m_mutex;
    QByteArrayList m_kept; ///< under m_mutex
    std::thread m_thread;
};

} // namespace brindlecam::desktop
