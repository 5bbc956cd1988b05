#pragma once

#include "platform/ClipboardContent.h"

#include <functional>

class QObject;

namespace brindlecam {

/// What became of something that was to be put on the clipboard.
enum class ClipboardFate {
    taken,     ///< it is there
    overtaken, ///< something newer of ours was on its way already
    refused,   ///< the clipboard could not be taken
};

/// The general clipboard. Main thread; no call waits. We stay its owner while the program runs.
class Pasteboard {
public:
    using Answer = std::function<void(ClipboardFate)>;

    virtual ~Pasteboard() = default;

    /// Replaces the content. `answer` is called once on the main thread, after this call, however
    /// long ago the system stopped listening; not when `context` is gone by then.
    virtual void set(ClipboardContent content, QObject* context, Answer answer) = 0;

    /// Offers a concealed content once more, as it is, to clipboard managers too. Nothing happens
    /// when what was set last is not concealed or could not be set: what is there then may be what
    /// was to be hidden. Nor when somebody else has the clipboard by now.
    virtual void reveal() = 0;

    /// Hands the content to a clipboard manager, when there is one, so that it outlives us. `done`
    /// is called once on the main thread, after this call: when the manager has it, when there is
    /// nothing to hand over, or when it has kept us waiting for too long. What has come a moment
    /// ago stays for another moment, for managers that only look on.
    virtual void handOver(QObject* context, std::function<void()> done) = 0;
};

} // namespace brindlecam
