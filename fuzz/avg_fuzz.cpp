// Any bytes as a field data file and the files beside it: both passes end without a fault and
// agree, every window that is kept can be used, and the project can be written and read.

#include "import_case.h"

#include "import/avg_file.h"

#include <cstddef>
#include <cstdint>

namespace {

using namespace keldrin;

constexpr fuzz::FieldReader Reader = {".avg", AVG_Count, AVG_Read, fuzz::requireUsableWindows};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    fuzz::importAndKeep({reinterpret_cast<const char *>(data), size}, Reader);
    return 0;
}
