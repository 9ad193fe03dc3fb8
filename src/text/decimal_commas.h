#pragma once

#include <string_view>

namespace keldrin {

/// True when a data row seems to have commas for decimal points: of its blank-separated cells that
/// begin as numbers, all that are no integers have the form "1,5", and there is one. Such a comma
/// is read as a separator of columns.
bool hasDecimalCommas(std::string_view line);

} // namespace keldrin
