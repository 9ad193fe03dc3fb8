#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

/// The names of the keys that are no character.
std::vector<std::string_view> scriptKeyNames();

/// The code of a key as a scenario names it: one character, or a name such as "Escape" or "PageUp",
/// either with "Ctrl+" or "Ctrl+Shift+" before it.
std::optional<int> keyCodeOf(std::string_view name);

/// The name by which a scenario gives a key's code; blank: it has none.
std::string keyNameOf(int code);

} // namespace keldrin
