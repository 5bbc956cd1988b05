#pragma once

#include <functional>

class QObject;

namespace brindlecam {

/// The system's wish that the program end: signals, the end of the session. Main thread.
class QuitSignals {
public:
    virtual ~QuitSignals() = default;

    /// `quit` runs on the main loop, never inside a signal handler, as long as `context` lives.
    virtual void whenAsked(QObject* context, std::function<void()> quit) = 0;
};

} // namespace brindlecam
