#pragma once

namespace brindlecam {

/// Gives what was freed back to the system, where the allocator would keep it: call it when a
/// picture's worth of small pieces has gone. Any thread; takes milliseconds on a large heap.
void giveFreedMemoryBack();

} // namespace brindlecam
