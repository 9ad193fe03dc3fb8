#pragma once

#include <string_view>

namespace keldrin {

// Widths of drawn text. Every surface gets its places from this one table of a proportional
// sans-serif letter, so that a page is laid out the same on screen, paper and in files.

/// The width of an em for a character width of 1: labels of 0.00872695 by 0.0196111 of a page of
/// 24 by 18 cm are then letters in their natural shape, with an em of 10 points.
inline constexpr float EmPerCharacterWidth = 27.0F / 16.0F;

/// Letters and digits reach this high above, and this deep below, the baseline; in ems of height.
inline constexpr float CapitalHeight = 0.72F;
inline constexpr float DescenderDepth = 0.21F;

/// Drawn width of a text in ems. Each character counts once, however many bytes it has.
float textWidthInEms(std::string_view text);

} // namespace keldrin
