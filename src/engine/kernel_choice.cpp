#include "engine/layer_kernel.h"

#include <array>
#include <cstdlib>
#include <string_view>

namespace keldrin {

#ifdef KELDRIN_VECTOR_KERNELS
extern const LayerKernel Avx2Kernel;
extern const LayerKernel Avx512Kernel;
#endif

namespace {

// The kernels in rising order of speed, then nulls.
using KernelList = std::array<const LayerKernel *, 4>;

KernelList listKernels() {
    KernelList list = {&PlainKernel};
#ifdef KELDRIN_VECTOR_KERNELS
    std::size_t count = 1;
    __builtin_cpu_init();
    const bool avx2 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    if (avx2) {
        list[count++] = &Avx2Kernel;
    }
    if (avx2 && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
        __builtin_cpu_supports("avx512vl")) {
        list[count++] = &Avx512Kernel;
    }
#endif
    return list;
}

const KernelList &kernelList() {
    static const KernelList list = listKernels();
    return list;
}

const LayerKernel *chosenKernel() {
    const char *wanted = std::getenv("KELDRIN_KERNEL");
    const LayerKernel *chosen = &PlainKernel;
    for (const LayerKernel *kernel : kernelList()) {
        if (kernel != nullptr) {
            chosen = kernel;
            if (wanted != nullptr && std::string_view(wanted) == kernel->name) {
                break;
            }
        }
    }
    return chosen;
}

} // namespace

const LayerKernel &fastestKernel() {
    static const LayerKernel *const kernel = chosenKernel();
    return *kernel;
}

const LayerKernel *const *availableKernels() {
    return kernelList().data();
}

} // namespace keldrin
