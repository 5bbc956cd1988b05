#pragma once

#include "base/Error.h"

#include <functional>
#include <optional>

class QObject;

namespace brindlecam {

/// Whether the user's session starts the program by itself. Main thread. Each answer comes later on
/// the main thread, never before the call returns and never once `context` is gone.
class LoginItem {
public:
    using Known = std::function<void(bool enabled)>;
    using Done = std::function<void(std::optional<Error> failed)>;

    virtual ~LoginItem() = default;

    /// Asks how things are now, whoever has made them so.
    virtual void ask(QObject* context, Known known) = 0;

    /// Has the session start the program from now on, or no more.
    virtual void set(bool enabled, QObject* context, Done done) = 0;
};

} // namespace brindlecam
