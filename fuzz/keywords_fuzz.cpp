// Any lines as keyword records: no fault, and indices that other code uses stay in their tables.

#include "keywords/record.h"
#include "messages/message_log.h"
#include "text/enumeration.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    keldrin::messageLog() = keldrin::MessageLog{};
    keldrin::messageLog().quiet = true;
    keldrin::enumerationMemo() = keldrin::EnumerationMemo{};
    keldrin::Metadata metadata;
    std::string_view text(reinterpret_cast<const char *>(data), size);
    for (int record = 1; !text.empty(); ++record) {
        const std::size_t end = text.find('\n');
        keldrin::MDP_Read_Record(metadata, record, text.substr(0, end), record % 3);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    const int type = metadata.Survey.TypeIndex;
    const int unit = metadata.Unit.Length.value;
    const int cards = metadata.Qdr.NumCard.value;
    if (type < 1 || type > 7 || unit < 1 || unit > 2 || cards < 1 || cards > 16 ||
        !(metadata.Tx.LengthX.value >= 0.01F)) {
        std::abort();
    }
    return 0;
}
