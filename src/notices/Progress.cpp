#include "notices/Progress.h"

#include "notices/Toast.h"

#include <QTimer>

namespace brindlecam {

Progress::Progress(Toast& toast, const QString& text, const std::optional<ScreenInfo>& screen,
                   std::chrono::milliseconds patience)
    : m_toast(toast)
{
    QTimer::singleShot(patience, this, [this, text, screen] {
        m_said = true;
        m_toast.show(text, screen, Toast::Stays::untilEnded);
    });
}

Progress::~Progress()
{
    if (m_said)
        m_toast.endLasting();
}

} // namespace brindlecam
