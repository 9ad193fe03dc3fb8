#pragma once

#include <string>
#include <vector>

namespace keldrin {

enum class RowKind { Info, Notice, Warning, Error };

/// A message in the list of log and messages.
struct MessageRow {
    RowKind kind = RowKind::Info;
    std::string file; ///< that it is about; blank: none
    int row = 0;      ///< of the file; 0: none
    std::vector<std::string> lines;
};

using MessageRows = std::vector<MessageRow>;

} // namespace keldrin
