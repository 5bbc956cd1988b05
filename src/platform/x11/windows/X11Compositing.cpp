#include "platform/x11/windows/X11Compositing.h"

#include "platform/x11/grab/ServerPixels.h"
#include "platform/x11/windows/CompositorWatch.h"

#include <utility>

namespace brindlecam {

X11Compositing::X11Compositing(std::shared_ptr<CompositorWatch> compositor,
                               std::shared_ptr<ServerPixels> pixels)
    : m_compositor(std::move(compositor))
    , m_backdrops(std::move(pixels))
{
}

bool X11Compositing::blends() const
{
    return m_compositor->runs();
}

void X11Compositing::whenChanged(QObject* context, std::function<void()> changed)
{
    m_compositor->whenChanged(context, std::move(changed));
}

QImage X11Compositing::backdrop(const QRect& native)
{
    const Result<QImage> image = m_backdrops.read(native);
    return image ? image.value() : QImage();
}

} // namespace brindlecam
