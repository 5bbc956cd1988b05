#pragma once

namespace brindlecam {

/// Says that nobody needs the upper halves of the wide vector registers. What ran before on this
/// thread, as painting does, may have left something in them, and then many processors take two to
/// three times as long for vector code of 128 bits: call it before loops of that. Costs nothing.
void forgetWideRegisters();

} // namespace brindlecam
