#include "base/FreedMemory.h"

#include <cstdlib> // says whose library this is

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace brindlecam {

void giveFreedMemoryBack()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace brindlecam
