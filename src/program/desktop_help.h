#pragma once

#include <optional>
#include <string_view>

namespace keldrin {

/// Answers --help and the like for keldrin, the desktop program; see answerHelp.
/// first  the first word after the program's name, blank when there is none
std::optional<int> answerDesktopHelp(std::string_view first);

} // namespace keldrin
