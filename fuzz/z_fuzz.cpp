// Any bytes as a report file and the files beside it: both passes end without a fault and agree,
// every reading that is kept can be used, and the project can be written and read.

#include "import_case.h"

#include "import/z_file.h"

#include <cstddef>
#include <cstdint>

namespace {

using namespace keldrin;

void requireUsable(const SoundingRecord &record) {
    fuzz::require(isPresent(record.Station));
    fuzz::requireUsableWindows(record);
}

constexpr fuzz::FieldReader Reader = {".z", Z_Count, Z_Read, requireUsable};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    fuzz::importAndKeep({reinterpret_cast<const char *>(data), size}, Reader);
    return 0;
}
