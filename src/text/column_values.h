#pragma once

#include <span>
#include <string_view>

namespace keldrin {

// Numbers out of chosen columns of a line (blank-or-comma separated), without a message.
// iVarCol  by variable: its column from 1, 0 for none
// values   out, by variable; MissingValue where the column is missing or out of range, holds a "*"
//          or cannot be read, and for variables after the end of iVarCol
// No reader calls them, since each reports what it cannot read; they are documented for tables that
// do not.

void Str_Columns_to_R4(std::string_view line, std::span<const int> iVarCol,
                       std::span<float> values);
void Str_Columns_to_R8(std::string_view line, std::span<const int> iVarCol,
                       std::span<double> values);

} // namespace keldrin
