#pragma once

#include "page/surfaces/surface.h"

#include <optional>
#include <string>
#include <string_view>

namespace keldrin {

// The colours of pages by their names.

namespace Colour {
inline constexpr PageColour Black = 0x000000;
inline constexpr PageColour Red = 0xE00000;
inline constexpr PageColour Blue = 0x0000E0;
inline constexpr PageColour Grey = 0xC8C8C8; ///< grid marks, behind the data
inline constexpr PageColour White = 0xFFFFFF;
} // namespace Colour

/// The colour of a name in any case.
std::optional<PageColour> colourOfName(std::string_view name);

/// The name in capitals, or "#rrggbb" for a colour without one.
std::string nameOfColour(PageColour colour);

/// "#rrggbb".
std::string colourCodeText(PageColour colour);

} // namespace keldrin
