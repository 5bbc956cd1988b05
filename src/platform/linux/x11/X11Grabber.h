#pragma once

#include "platform/Grabber.h"
#include "platform/linux/x11/PixelStore.h"
#include "platform/linux/x11/RootFormat.h"

#include <optional>

namespace brindlecam {

/// Reads the root window. The server writes straight into the pictures' memory (MIT-SHM); only when
/// it can't, pictures come through the connection. A dimmed copy is made while the server still
/// copies: the picture is asked for in bands, and each is dimmed as it arrives. The pad byte of the
/// pictures' pixels is undefined.
class X11Grabber final : public Grabber {
public:
    X11Grabber();

    /// `done` is called before this returns.
    void grabScreens(const std::vector<ScreenInfo>& screens, GrabOptions options,
                     Done done) override;
    /// An error when the rectangle is empty or not wholly on the desktop.
    [[nodiscard]] Result<QImage> grabRegion(const QRect& native) override;
    void warmUp(const std::vector<ScreenInfo>& screens) override;

    /// Memory that waits for the next picture.
    [[nodiscard]] std::size_t keptBytes() const { return m_store.keptBytes(); }

private:
    struct Picture {
        QImage image;
        QImage dimmed;
    };

    [[nodiscard]] Result<Picture> grab(const QRect& native, GrabOptions options);
    /// Nothing when the server can't share memory with us.
    [[nodiscard]] std::optional<Picture> grabShared(const QRect& native, GrabOptions options);
    [[nodiscard]] Result<QImage> grabThroughConnection(const QRect& native) const;
    /// Turns a picture in the server's layout into the one that everybody uses.
    [[nodiscard]] QImage converted(QImage image) const;
    [[nodiscard]] QImage dimmedCopy(const QImage& image);

    PixelStore m_store;
    RootFormat m_format;
    bool m_hasSharedMemory = false;
};

} // namespace brindlecam
