#include "platform/x11/connection/KeyRepeats.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace brindlecam {

KeyRepeats::KeyRepeats()
{
    QCoreApplication::instance()->installEventFilter(this);
}

// Windows come before their widgets, which get what the window makes of it.
bool KeyRepeats::eventFilter(QObject* watched, QEvent* event)
{
    if (!watched->isWindowType())
        return false;
    if (event->type() == QEvent::KeyRelease) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        m_lastRelease = {key.nativeScanCode(), key.timestamp()};
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (!isUnmarkedRepeat(key))
        return false;
    QKeyEvent marked(key.type(), key.key(), key.modifiers(), key.nativeScanCode(),
                     key.nativeVirtualKey(), key.nativeModifiers(), key.text(), true,
                     static_cast<quint16>(key.count()), key.device());
    marked.setTimestamp(key.timestamp());
    QCoreApplication::sendEvent(watched, &marked);
    event->setAccepted(marked.isAccepted());
    return true;
}

bool KeyRepeats::isUnmarkedRepeat(const QKeyEvent& event) const
{
    return !event.isAutoRepeat() && m_lastRelease.time != 0 &&
           m_lastRelease.time == event.timestamp() && m_lastRelease.code == event.nativeScanCode();
}

} // namespace brindlecam
