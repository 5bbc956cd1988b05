#pragma once

#include <functional>

namespace brindlecam {

/// The threads for work that may take its time: encoding, decoding, files. Not Qt's own pool, in
/// which QtGui paints large areas in pieces and waits for them: the main thread would stand behind
/// all that we have queued there.
namespace WorkPool {

/// Runs it as soon as a thread is free; an Executor. Any thread. The application object waits for
/// everything when it goes.
void run(std::function<void()> work);

} // namespace WorkPool

} // namespace brindlecam
