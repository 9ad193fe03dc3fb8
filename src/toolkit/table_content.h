#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// What a table in a dialog shows: rows and columns of text, of which the user selects rows.

struct HeadedColumn {
    std::string head;      ///< with its unit; "\n" begins a second line
    bool isNumber = false; ///< stands at the right of its column

    bool operator==(const HeadedColumn &) const = default;
};

struct TableContent {
    std::vector<HeadedColumn> columns;
    std::vector<std::vector<std::string>> rows; ///< a cell for each column

    bool operator==(const TableContent &) const = default;
};

/// Rows of a table, from 1, in ascending order.
using TableRows = std::vector<int>;

/// "1-5,9"; blank for no rows.
std::string rowsText(const TableRows &rows);

/// The rows that "1-5,9", "all" or "none" names; nothing when that is no such list, or when one of
/// them is not in a table of `count` rows.
std::optional<TableRows> rowsNamed(std::string_view text, int count);

/// Rows as lines of cells between tabs, below a line of the heads, each with a line end: what other
/// programs take for cells.
/// rows  those of the table; empty: all
std::string tabbedText(const TableContent &table, const TableRows &rows);

} // namespace keldrin
