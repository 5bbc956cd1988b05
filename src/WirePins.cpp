#include "Program.h"

#include <utility>

namespace brindlecam {

void Program::wirePins()
{
    m_captureController.onPin = [this](const Rendered& picture, const QRect& nativeFrame) {
        m_pinnedCaptures.pin(picture, nativeFrame);
    };
    m_pinnedCaptures.onCopy = [this](const Rendered& picture,
                                     std::function<void(ClipboardFate)> done) {
        m_captureResults.copied(picture, std::move(done));
    };
    m_pinnedCaptures.onSave = [this](const Rendered& picture) {
        m_captureController.save(picture);
    };
}

} // namespace brindlecam
