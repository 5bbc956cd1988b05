#pragma once

#include <functional>

namespace brindlecam {

/// Runs a piece of work somewhere: on the thread pool, or wherever a test wants it. Work handed to
/// one executor may run in parallel and in any order.
using Executor = std::function<void(std::function<void()>)>;

} // namespace brindlecam
