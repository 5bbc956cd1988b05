#include "Program.h"

namespace brindlecam {

void Program::wireApp()
{
    m_delegate.onQuit = [this] { quit(); };
    m_hotKeyCenter.onPressed = [this](CaptureAction action) { m_delegate.perform(action); };
    m_hotKeyCenter.isAvailable = [this](CaptureAction action) {
        return m_delegate.isAvailable(action);
    };
    m_hotKeyCenter.onReloaded = [this] {
        m_hostedMenu.refreshShortcuts();
        m_ownMenu.refreshShortcuts();
    };
    m_delegate.wire(m_hostedMenu);
    m_delegate.wire(m_ownMenu);
}

} // namespace brindlecam
