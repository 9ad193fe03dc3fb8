#include "keywords/record.h"

#include "base/ascii.h"
#include "base/version.h"
#include "keywords/aliases.h"
#include "keywords/group_readers.h"
#include "messages/message_log.h"
#include "text/columns.h"

#include <array>

namespace keldrin {
namespace {

constexpr int NoRecord = 1;
constexpr int OtherProgram = 2;
constexpr int UnknownGroup = 3;

constexpr std::size_t KeyWidth = 32;
constexpr std::size_t TokenWidth = 32;
constexpr std::size_t ValueWidth = 2048;
constexpr int MostTokens = 128;

using Key = FixedText<KeyWidth>;

/// Records of the header's kind are known, and nobody needs them.
int dropRecord(const KeywordRecord & /*record*/, Metadata & /*metadata*/) {
    return 0;
}

struct GroupEntry {
    std::string_view group;
    int (*reader)(const KeywordRecord &record, Metadata &metadata);
};

constexpr auto Groups = std::to_array<GroupEntry>({
    {"HEADER", dropRecord},
    {"JOB", Job_MD_Read},
    {"SURVEY", Survey_MD_Read},
    {"UNIT", Unit_MD_Read},
    {"GRID", Grid_MD_Read},
    {"LINE", Line_MD_Read},
    {"STN", Stn_MD_Read},
    {"QDR", Qdr_MD_Read},
    {"GPS", Gps_MD_Read},
    {"CH", Ch_MD_Read},
    {"TX", Tx_MD_Read},
    {"RX", Rx_MD_Read},
});

/// True when a prefix, blank-filled to its width, names this program.
bool namesThisProgram(const Key &prefix) {
    std::string filled = prefix.str();
    filled.resize(KeyWidth, ' ');
    return holds(filled, ProgramName);
}

struct GroupKey {
    std::string_view group;
    std::string_view keyword;
};

/// A key without a group belongs to the program's own, which nobody reads.
GroupKey splitKey(std::string_view name) {
    const std::size_t point = name.find('.');
    if (point == std::string_view::npos || point == 0) {
        return {"KELDRIN", name};
    }
    return {trimRight(name.substr(0, point)), name.substr(point + 1)};
}

int dispatch(const GroupKey &name, KeywordRecord &record, Metadata &metadata) {
    for (const GroupEntry &entry : Groups) {
        if (entry.group == name.group) {
            record.keyword = name.keyword;
            return entry.reader(record, metadata);
        }
    }
    return UnknownGroup;
}

constexpr std::array<const GroupTable *, 11> Tables = {
    &JobGroup, &SurveyGroup, &UnitGroup, &LineGroup, &StnGroup, &TxGroup,
    &RxGroup,  &GridGroup,   &GpsGroup,  &QdrGroup,  &ChGroup};

} // namespace

std::span<const GroupTable *const> keywordGroups() {
    return Tables;
}

int MDP_Read_Record(Metadata &metadata, int recordNumber, std::string_view line, int level,
                    bool quiet) {
    const std::size_t dollar = line.find('$');
    const std::size_t equals = line.find('=');
    if (dollar == std::string_view::npos || equals == std::string_view::npos || equals < dollar) {
        return NoRecord;
    }
    std::string_view head = line.substr(dollar + 1, equals - dollar - 1);
    Key prefix;
    if (const std::size_t colon = head.find(':'); colon != std::string_view::npos) {
        prefix = Str_Upper(trimLeft(head.substr(0, colon)));
        head.remove_prefix(colon + 1);
        if (prefix != "TEM" && !namesThisProgram(prefix)) {
            return OtherProgram;
        }
    }
    Key key = trimLeft(head);
    if (!prefix.isBlank() && prefix != "TEM") {
        // Records with the program's own prefix reach no group, and files rely on that.
        key = prefix.str() + "." + key.str();
    }
    return MDP_Read_Value(metadata, {recordNumber, trimBlanks(line), quiet}, key.view(),
                          line.substr(equals + 1), level);
}

int MDP_Read_Value(Metadata &metadata, const RecordLine &record, std::string_view key,
                   std::string_view value, int level) {
    const std::string_view values = cutText(trimLeft(value), ValueWidth);
    if (trimRight(values).empty()) {
        return 0;
    }
    SplitCells split;
    Str_Split_Delimited(values, ",;", MostTokens, ValueWidth, split);
    bool cut = false;
    for (std::string_view &cell : split.cells) {
        cell = trimBlanks(cell);
        cut = cut || cell.size() > TokenWidth;
        cell = trimRight(cutText(cell, TokenWidth));
    }
    if (split.cells.empty()) {
        return 0;
    }
    const Key written = trimLeft(key);
    const std::string name = Str_Upper(written.view());
    const GroupKey canonical = splitKey(canonicalKey(name));
    if (canonical.keyword.empty()) {
        if (!record.quiet) {
            ReportWarning(
                {"MDP_Read_Value.WARNING: No keyword name in " + written.str() + " from line",
                 record.line});
        }
        return NoRecord;
    }
    KeywordRecord taken{record, written.view(), {}, split.cells, level, trimRight(values), cut};
    return dispatch(canonical, taken, metadata);
}

} // namespace keldrin
