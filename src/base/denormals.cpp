#include "base/denormals.h"

#if defined(__SSE__) || defined(_M_X64)
#include <xmmintrin.h>
#endif

#include <cstdint>

namespace keldrin {

void flushDenormals() {
#if defined(__SSE__) || defined(_M_X64)
    constexpr unsigned flushToZero = 0x8000U;
    constexpr unsigned denormalsAreZero = 0x0040U;
    _mm_setcsr(_mm_getcsr() | flushToZero | denormalsAreZero);
#elif defined(__aarch64__)
    constexpr std::uint64_t flushToZero = std::uint64_t{1} << 24U;
    std::uint64_t control = 0;
    asm volatile("mrs %0, fpcr" : "=r"(control));
    asm volatile("msr fpcr, %0" : : "r"(control | flushToZero));
#endif
}

} // namespace keldrin
