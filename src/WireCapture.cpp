#include "Program.h"

namespace brindlecam {

void Program::wireCapture()
{
    m_delegate.onArea = [this] { m_captureController.begin(); };
    m_delegate.onFullScreen = [this] { m_captureController.captureFullScreen(); };
    m_delegate.isBusy = [this] { return m_activity.any(); };
    m_delegate.onCountdown = [this](CaptureAction action, int seconds) {
        m_countdown.run(seconds, [this, action] { m_delegate.perform(action); });
    };
}

} // namespace brindlecam
