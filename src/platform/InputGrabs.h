#pragma once

#include <functional>

class QObject;

namespace brindlecam {

/// Other programs' hold on pointer and keyboard: while one has them, as for an open menu, windows
/// of ours are seen but get no input. Main thread.
class InputGrabs {
public:
    enum class Answer {
        free,  ///< nobody holds pointer or keyboard (any more)
        taken, ///< somebody keeps them, and will for longer than anyone would wait
    };
    using Done = std::function<void(Answer)>;

    virtual ~InputGrabs() = default;

    /// Has pointer and keyboard freed: closes another program's open menu as its user would, and
    /// waits a moment for keys and buttons that are held. Whatever else holds them is left in
    /// peace. `done` runs before this returns when nobody holds them; later otherwise, at most
    /// once, and not at all when `context` has gone. One request at a time: a new one ends the
    /// last.
    virtual void clear(QObject* context, Done done) = 0;
};

} // namespace brindlecam
