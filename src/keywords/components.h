#pragma once

#include "keywords/keyword_table.h"

namespace keldrin {

/// The sides of a loop, the axes of a coil: fields of their own that one record can set together.
using Components = std::span<SourcedReal *const>;

/// Token i sets component i and all after it, so one token sets all. Each component keeps its own
/// source level; a token that no component may take is not read.
/// skipped  marks the tokens that are no values; they keep their place in the count
/// last     out: the last value read
/// returns  true when a component was set
bool takeComponents(const Reading &reading, CellReader<float> cell, Components components,
                    bool (*skipped)(std::string_view token), float &last);

/// The sides of a loop from lengths, of which one sets both. True when a side was set.
bool takeSides(const Reading &reading, std::array<SourcedLength *, 2> sides);

/// A token that only gives the unit of the lengths beside it.
bool isLengthUnit(std::string_view token);

} // namespace keldrin
