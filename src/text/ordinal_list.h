#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace keldrin {

/// Ordinals of soundings, both ends included.
struct OrdinalRange {
    int first = 1;
    int last = 1;
};

/// Reads a list such as "1-5,9"; blanks around numbers do not count. Empty if the text is not such
/// a list, an ordinal is below 1 or a range runs backward.
std::optional<std::vector<OrdinalRange>> readOrdinalList(std::string_view list);

bool isInList(std::span<const OrdinalRange> list, int ordinal);

} // namespace keldrin
