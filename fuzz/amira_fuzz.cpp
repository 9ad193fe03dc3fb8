// Any bytes as an AMIRA file and the files beside it: both passes end without a fault and agree,
// every window that is kept can be used, and the project can be written and read.

#include "import_case.h"

#include "import/amira/file.h"

#include <cstddef>
#include <cstdint>

namespace {

using namespace keldrin;

void requireUsable(const SoundingRecord &record) {
    fuzz::require(isPresent(record.RxStn) && isPresent(record.TxStn));
    fuzz::requireUsableWindows(record);
}

constexpr fuzz::FieldReader Reader = {".tem", AMR_Count, AMR_Read, requireUsable};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    fuzz::importAndKeep({reinterpret_cast<const char *>(data), size}, Reader);
    return 0;
}
