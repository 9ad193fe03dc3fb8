#include "keywords/group_readers.h"

namespace keldrin {
namespace {

using namespace rows;

constexpr std::array<std::string_view, 3> LineTypeNames = {"STRAIGHT", "MEANDER", "POINTS"};

/// The name keeps 16 characters; lines are distinguished by the whole of it.
int readName(const Reading &reading) {
    LineMetadata &line = reading.metadata.Line;
    keepSource(reading, line.Name, [&] {
        if (!takeTexts(reading, elementsOf(line.Name.value))) {
            return false;
        }
        line.fullName = reading.record.value;
        return true;
    });
    return 0;
}

constexpr auto LineRows = std::to_array<KeywordRow>({
    irregular<&LineMetadata::Name>("NAME", readName),
    text<&LineMetadata::Direction>("DIRECTION"),
    text<&LineMetadata::Spread>("SPREAD"),
    number<&LineMetadata::Number>("NUMBER", StationRange),
    azimuth<&LineMetadata::Azimuth>("AZIMUTH"),
    enumeration<&LineMetadata::Type>("TYPE", "Line.Type", LineTypeNames),
});

} // namespace

constinit const GroupTable LineGroup = groupTable<LineMetadata>("Line", LineRows);

int Line_MD_Read(const KeywordRecord &record, Metadata &metadata) {
    return readGroup(LineGroup, record, metadata);
}

} // namespace keldrin
