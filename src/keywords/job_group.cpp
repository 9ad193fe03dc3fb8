#include "keywords/group_readers.h"

namespace keldrin {
namespace {

using namespace rows;

constexpr auto JobRows = std::to_array<KeywordRow>({
    text<&JobMetadata::Name>("NAME"),
    text<&JobMetadata::Area>("AREA"),
    text<&JobMetadata::For>("FOR"),
    text<&JobMetadata::By>("BY"),
    text<&JobMetadata::Number>("NUMBER"),
    text<&JobMetadata::Date>("DATE"),
    text<&JobMetadata::Comment>("COMMENT"),
});

} // namespace

constinit const GroupTable JobGroup = groupTable<JobMetadata>("Job", JobRows);

int Job_MD_Read(const KeywordRecord &record, Metadata &metadata) {
    return readGroup(JobGroup, record, metadata);
}

} // namespace keldrin
