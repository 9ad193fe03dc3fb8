#pragma once

#include "page/plot_scale.h"
#include "page/surfaces/surface.h"
#include "sounding/page_layout.h"

#include <string_view>

namespace keldrin {

/// How values turn into colours.
struct ValueColours {
    PlotScale scale;
    int colours = 0; ///< of colourScales(), from 0

    [[nodiscard]] PageColour of(float value) const;
};

/// Numbers the axis that follows at 1, 2 and 5 times the powers of ten, so that the ends of a bar
/// with round limits can be read. Leaves an axis as it is that is not logarithmic, or too long or
/// too short for them.
void numberRoundValues(const PlotScale &scale);

/// Draws the colours of values from the lower to the upper limit in a frame, with numbers and label
/// to its right. Where areas cannot be filled there are frame, numbers and label.
void drawColourBar(const PageFrame &frame, const ValueColours &colours, std::string_view label);

} // namespace keldrin
