#include "canvas/CanvasKeys.h"

#include <QKeyEvent>

namespace brindlecam {

std::optional<CanvasCommand> CanvasKeys::pressed(const QKeyEvent& event) const
{
    const auto command = CanvasCommand::of(event);
    if (command && !command->repeats() && isRepeat(event))
        return std::nullopt;
    return command;
}

void CanvasKeys::released(const QKeyEvent& event)
{
    m_lastRelease = {event.key(), event.timestamp()};
}

// X sends a repeat as release and press of one moment. Qt recognises it only if both are read in
// one go, which a busy machine does not grant.
bool CanvasKeys::isRepeat(const QKeyEvent& event) const
{
    return event.isAutoRepeat() || (m_lastRelease.time != 0 && m_lastRelease.key == event.key() &&
                                    m_lastRelease.time == event.timestamp());
}

} // namespace brindlecam
