#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace keldrin {

/// The names of the keys that are no character.
std::vector<std::string_view> scriptKeyNames();

/// The code of a key as a scenario names it: one character, or a name such as "Escape" or "PageUp",
/// either with "Ctrl+" or "Ctrl+Shift+" before it.
std::optional<int> keyCodeOf(std::string_view name);

} // namespace keldrin
