#pragma once

#include "page/surfaces/surface.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// Colours of values that fill areas and dots.

struct ColourScale {
    std::string_view name;             ///< as a dialog shows it
    std::span<const PageColour> steps; ///< from the lowest to the highest value, unless turned
    bool turned = false;               ///< from the highest to the lowest value
};

/// The scales there are, the default first. The first two are uniform to the eye, in colour and in
/// grey, and are told apart by colour-blind readers; the last one is what many are used to.
std::span<const ColourScale> colourScales();

/// Their names, for a list.
std::vector<std::string> colourScaleNames();

/// The colour of a value.
/// scale  index in colourScales(), held to those there are
/// part   where the value lies between the limits, 0..1, beyond them held; not a number: white
PageColour colourAt(int scale, float part);

/// A colour mixed with white: 0 leaves it, 1 gives white.
PageColour fadedColour(PageColour colour, float part);

} // namespace keldrin
