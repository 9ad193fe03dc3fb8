#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace keldrin {

/// The lines of a text, broken at blanks into at most `width` bytes; a longer word has a line of
/// its own. What stands in square brackets is not broken. Blanks at a break are dropped; an empty
/// text has no line. The views point into `text`.
std::vector<std::string_view> wrapText(std::string_view text, std::size_t width);

} // namespace keldrin
