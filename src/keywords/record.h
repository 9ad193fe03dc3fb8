#pragma once

#include "model/metadata.h"
#include "text/value_readers.h"

#include <string_view>

namespace keldrin {

// Keyword records among the comment lines of field data and side files:
//
//   $ [prefix:] group.keyword = value[, value ...]
//
// Case does not count in prefix and key. Old keys without a group are known by an alias table.
//
// returns  0  the record was taken, or dropped on purpose, or has no value
//          1  no record: no "$", no "=" after it, no keyword; or a point with an index that does
//             not exist
//          2  a prefix of another program
//          3  unknown group, not reported
// A point whose index cannot be read gives the status of that read.

/// Reads one line of a file. Text before the first "$" does not count.
/// level  source of the record: 2 the data file, 1 its side file. It replaces values of its own
///        and of lower levels
/// quiet  an earlier pass has reported the record's faults: none is reported
int MDP_Read_Record(Metadata &metadata, int recordNumber, std::string_view line, int level,
                    bool quiet = false);

/// Reads a key and its values, which are separated by "," or ";": at most 128 of 32 bytes.
/// record  where the key stands, for messages
int MDP_Read_Value(Metadata &metadata, const RecordLine &record, std::string_view key,
                   std::string_view value, int level);

} // namespace keldrin
