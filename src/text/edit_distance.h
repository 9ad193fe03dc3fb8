#pragma once

#include <string_view>

namespace keldrin {

/// The optimal string alignment distance of two texts: the fewest insertions, deletions,
/// substitutions and exchanges of neighbours, none of which is edited twice. Case and surrounding
/// blanks do not count; 0 when either text is blank.
int Str_Edit_Distance(std::string_view a, std::string_view b);

} // namespace keldrin
