#include "long/WideRegisters.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace brindlecam {

#if defined(__x86_64__) || defined(__i386__)

namespace {

__attribute__((target("avx"))) void clearUpperHalves()
{
    _mm256_zeroupper();
}

} // namespace

void forgetWideRegisters()
{
    static const bool areThere = __builtin_cpu_supports("avx") != 0;
    if (areThere)
        clearUpperHalves();
}

#else

void forgetWideRegisters() {}

#endif

} // namespace brindlecam
