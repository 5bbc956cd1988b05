#pragma once

#include <functional>

namespace brindlecam {

/// Calls work(0) to work(count - 1), each once and in any order, here and on those threads of the
/// common pool that are free now; returns when all are done. `work` must not throw and must stand
/// being called from several threads at a time.
void inParallel(int count, const std::function<void(int)>& work);

} // namespace brindlecam
