#pragma once

#include <cassert>
#include <concepts>
#include <cstddef>

namespace keldrin {

/// A count, or a place from 0, that a record or a file holds with a sign: as an index of a
/// container. A negative one is a fault of the caller.
template <std::signed_integral Int>
constexpr std::size_t asIndex(Int place) {
    assert(place >= 0);
    return static_cast<std::size_t>(place);
}

} // namespace keldrin
