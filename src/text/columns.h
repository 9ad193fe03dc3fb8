#pragma once

#include "base/index.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

/// The cells of one line. The views stand until the next split into the same record, which keeps
/// its memory, so that a file is split without an allocation a line.
struct SplitCells {
    std::vector<std::string_view> cells; ///< found cells, in order, each cut to the given width
    std::string work;                    ///< the line as it was rewritten for splitting

    /// The cell of a 1-based column; blank when the line has no such column or `column` is 0.
    [[nodiscard]] std::string_view column(int column) const {
        return column < 1 || asIndex(column) > cells.size() ? std::string_view{}
                                                            : cells[asIndex(column - 1)];
    }
};

// Splitting. Each cell is cut to `width` bytes; trailing blanks carry no meaning. A cell of which
// a double quote is never closed runs to the end of the line.

/// Blank-or-comma separated columns. A comma ends a cell, also an empty one; a run of blanks or
/// tabs counts once, and blanks around a comma belong to it; nothing between double quotes counts,
/// and the quotes become blanks. A comma at the end of the line opens no further cell. What stands
/// after `maxCols` cells is dropped without a message.
void Str_Split_Columns(std::string_view line, int maxCols, std::size_t width, SplitCells &out);

/// Comma separated columns; too many cells are reported. The end of the line ends the last cell,
/// and a comma there is part of it. Double quotes and tabs become blanks, and cells are
/// left-adjusted.
void Str_Split_Csv(std::string_view line, int maxCols, std::size_t width, SplitCells &out);

/// The same with any of `delimiters` in place of the comma.
void Str_Split_Delimited(std::string_view line, std::string_view delimiters, int maxCols,
                         std::size_t width, SplitCells &out);

/// The last run of digits in a text. Status 0; -1 without a digit (value 1); above 0 failed.
int Str_Trailing_Integer(std::string_view text, int &value);

/// A label of a file and the program variable that it stands for. Tables of these are sorted in
/// ascending byte order by label; the search stops at the first label above the one sought.
struct LabelAlias {
    std::string_view label;
    std::string_view variable;
};

// Matching. Labels count in upper case and variables are given so.

/// Which column holds which variable: 1-based, 0 for none.
struct ColumnMap {
    std::vector<int> iVarCol; ///< by variable: its column
    std::vector<int> iColVar; ///< by column: its variable
    int nCols = 0;            ///< cells of the label line
};

struct LabelMatch {
    bool reportMissing = false; ///< report variables that no column holds, with status 1
    bool exactMatch = true;     ///< else a label matches a variable whose name it contains
    int maxCols = 32;
    std::size_t width = 32; ///< of a label
};

/// Matches a label line to variables through an alias table, column by column: the first column
/// that reaches a variable takes it.
/// returns  0, or 1 when reportMissing is set and a variable has no column (reported)
int Str_Column_Labels_Alias(std::string_view line, const LabelMatch &options,
                            std::span<const LabelAlias> aliases,
                            std::span<const std::string_view> VarNames, ColumnMap &map);

/// The same without aliases, variable by variable: each takes the first free column that matches.
int Str_Column_Labels(std::string_view line, const LabelMatch &options,
                      std::span<const std::string_view> VarNames, ColumnMap &map);

// No reader calls the two that follow; they complete the documented ways to match labels.

/// The same with several names for each variable, tried in turn; the first one names it in
/// messages.
int Str_Column_Labels_Synonyms(std::string_view line, const LabelMatch &options,
                               std::span<const std::vector<std::string_view>> synonyms,
                               ColumnMap &map);

/// Str_Column_Labels on a comma separated line, which is logged first.
/// highestColumn  out: the highest column that holds a variable, 0 for none
int Str_Column_Labels_Csv(std::string_view line, const LabelMatch &options,
                          std::span<const std::string_view> VarNames, ColumnMap &map,
                          int &highestColumn);

/// The canonical form of a label by the alias rule above; the label itself when it has none.
std::string_view aliasOf(std::string_view label, std::span<const LabelAlias> aliases);

} // namespace keldrin
