#pragma once

#include <string>

namespace keldrin {

/// How much of a project or model file there is. Looked at without a word to the user.
struct TableExtent {
    int rows = 0;               ///< data rows; of a project those behind a good control block
    bool endsInLineEnd = false; ///< else the last row may have been cut off
};

TableExtent projectExtent(const std::string &path); ///< no rows where it cannot be read
TableExtent modelExtent(const std::string &path);

/// True when a file that had rows has none now, or ends in the middle of one as it did not before.
bool isTorn(const TableExtent &now, const TableExtent &before);

} // namespace keldrin
