#pragma once

#include "platform/Compositing.h"
#include "platform/x11/grab/RootReader.h"

#include <memory>

namespace brindlecam {

class CompositorWatch;
class ServerPixels;

/// Blending by whatever compositor runs on the X server. Main thread.
class X11Compositing final : public Compositing {
public:
    X11Compositing(std::shared_ptr<CompositorWatch> compositor,
                   std::shared_ptr<ServerPixels> pixels);

    [[nodiscard]] bool blends() const override;
    void whenChanged(QObject* context, std::function<void()> changed) override;
    [[nodiscard]] QImage backdrop(const QRect& native) override;

private:
    const std::shared_ptr<CompositorWatch> m_compositor;
    RootReader m_backdrops;
};

} // namespace brindlecam
