#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

/// The words of a list with commas between them.
std::vector<std::string_view> listWords(std::string_view list);

/// Names as a sentence lists them: "svg, hpgl and wmf".
std::string inWords(std::span<const std::string_view> names);

} // namespace keldrin
