#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <optional>

namespace brindlecam::desktop {

/// How a clipboard manager comes to what it keeps.
enum class KeepsBy {
    looking, ///< takes every picture that comes to the clipboard, without being asked
    handing, ///< takes what a program hands over that is about to quit, and offers it itself
};

/// A clipboard manager as desktops have one. Serves on a thread of its own.
class ClipboardManager {
public:
    ClipboardManager() = default;
    virtual ~ClipboardManager() = default;
    ClipboardManager(const ClipboardManager&) = delete;
    ClipboardManager& operator=(const ClipboardManager&) = delete;

    /// The PNGs it has kept so far, oldest first; the same one twice in a row is kept once.
    [[nodiscard]] virtual QByteArrayList kept() const = 0;
    /// How many it has left alone because their owner marks them as a secret.
    [[nodiscard]] virtual int secrets() const = 0;
    /// Waits until a program has handed something over. The PNG among it; none when nobody came, or
    /// there was none.
    [[nodiscard]] std::optional<QByteArray> handedOver();

protected:
    /// Whether a program has handed something over.
    [[nodiscard]] virtual bool wasHanded() const = 0;
};

} // namespace brindlecam::desktop
