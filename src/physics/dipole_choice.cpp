#include "physics/dipole_lanes.h"

#include <array>
#include <cstdlib>
#include <string_view>

namespace keldrin {

#ifdef KELDRIN_VECTOR_DIPOLES
extern const DipoleSums Avx2DipoleSums;
#endif

namespace {

// In rising order of speed, then nulls.
using SumsList = std::array<const DipoleSums *, 3>;

SumsList listSums() {
    SumsList list = {&PlainDipoleSums};
#ifdef KELDRIN_VECTOR_DIPOLES
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx2")) {
        list[1] = &Avx2DipoleSums;
    }
#endif
    return list;
}

const SumsList &sumsList() {
    static const SumsList list = listSums();
    return list;
}

const DipoleSums *chosenSums() {
    const char *wanted = std::getenv("KELDRIN_KERNEL");
    const bool plain = wanted != nullptr && std::string_view(wanted) == PlainDipoleSums.name;
    return plain || sumsList()[1] == nullptr ? &PlainDipoleSums : sumsList()[1];
}

} // namespace

const DipoleSums &fastestDipoleSums() {
    static const DipoleSums *const sums = chosenSums();
    return *sums;
}

const DipoleSums *const *availableDipoleSums() {
    return sumsList().data();
}

} // namespace keldrin
