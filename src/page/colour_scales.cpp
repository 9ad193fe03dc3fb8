#include "page/colour_scales.h"

#include "base/index.h"
#include "base/real.h"

#include <cmath>

namespace keldrin {

namespace {

// Both tables are taken, at 64 equal steps, from the colour maps "viridis" and "jet" of matplotlib
// 3.6.3 as Debian packs it (python3-matplotlib). Viridis is by Nathaniel Smith, Stefan van der Walt
// and Eric Firing, who gave it to the public domain (CC0).
constexpr std::array<PageColour, 64> Viridis = {
    0x440154, 0x46075A, 0x470D60, 0x471365, 0x48186A, 0x481D6F, 0x482374, 0x482878,
    0x472D7B, 0x46327E, 0x453781, 0x443B84, 0x424086, 0x404588, 0x3E4989, 0x3D4E8A,
    0x3A538B, 0x38588C, 0x365C8D, 0x34608D, 0x32648E, 0x31688E, 0x2F6C8E, 0x2D708E,
    0x2C738E, 0x2A778E, 0x297B8E, 0x277F8E, 0x26828E, 0x24868E, 0x238A8D, 0x218E8D,
    0x20928C, 0x1F968B, 0x1F9A8A, 0x1F9E89, 0x1FA187, 0x21A585, 0x23A983, 0x26AD81,
    0x2AB07F, 0x2FB47C, 0x35B779, 0x3BBB75, 0x42BE71, 0x4AC16D, 0x52C569, 0x5AC864,
    0x65CB5E, 0x6ECE58, 0x77D153, 0x81D34D, 0x8BD646, 0x95D840, 0xA0DA39, 0xAADC32,
    0xB5DE2B, 0xC0DF25, 0xCAE11F, 0xD5E21A, 0xDFE318, 0xEAE51A, 0xF4E61E, 0xFDE725};

constexpr std::array<PageColour, 64> Jet = {
    0x000080, 0x000092, 0x0000A4, 0x0000B6, 0x0000C8, 0x0000DA, 0x0000ED, 0x0000FF,
    0x0000FF, 0x0010FF, 0x0020FF, 0x0030FF, 0x0040FF, 0x0050FF, 0x0060FF, 0x0070FF,
    0x0084FF, 0x0094FF, 0x00A4FF, 0x00B4FF, 0x00C4FF, 0x00D4FF, 0x00E4F8, 0x0CF4EB,
    0x19FFDE, 0x26FFD1, 0x33FFC4, 0x40FFB7, 0x4DFFAA, 0x5AFF9D, 0x66FF90, 0x73FF83,
    0x83FF73, 0x90FF66, 0x9DFF5A, 0xAAFF4D, 0xB7FF40, 0xC4FF33, 0xD1FF26, 0xDEFF19,
    0xEBFF0C, 0xF8F500, 0xFFE600, 0xFFD700, 0xFFC800, 0xFFB900, 0xFFAB00, 0xFF9C00,
    0xFF8900, 0xFF7A00, 0xFF6C00, 0xFF5D00, 0xFF4E00, 0xFF3F00, 0xFF3000, 0xFF2200,
    0xFF1300, 0xED0400, 0xDA0000, 0xC80000, 0xB60000, 0xA40000, 0x920000, 0x800000};

constexpr std::array<ColourScale, 3> Scales = {{{"Uniform, low values bright", Viridis, true},
                                                {"Uniform, low values dark", Viridis, false},
                                                {"Rainbow, low values red", Jet, true}}};

} // namespace

std::span<const ColourScale> colourScales() {
    return Scales;
}

std::vector<std::string> colourScaleNames() {
    std::vector<std::string> names;
    for (const ColourScale &scale : colourScales()) {
        names.emplace_back(scale.name);
    }
    return names;
}

PageColour colourAt(int scale, float part) {
    constexpr PageColour white = 0xFFFFFF;
    const ColourScale &chosen =
        Scales[asIndex(limited(scale, 0, static_cast<int>(Scales.size()) - 1))];
    if (std::isnan(part)) {
        return white;
    }
    const auto last = static_cast<float>(chosen.steps.size() - 1);
    const float held = limited(chosen.turned ? 1.0F - part : part, 0.0F, 1.0F);
    return chosen.steps[asIndex(nearestInt(held * last))];
}

PageColour fadedColour(PageColour colour, float part) {
    constexpr float full = 255.0F;
    PageColour faded = 0;
    for (unsigned shift = 0; shift < 24; shift += 8) {
        const auto channel = static_cast<float>(colour >> shift & 0xFFU);
        const int mixed = nearestInt(channel + limited(part, 0.0F, 1.0F) * (full - channel));
        faded |= static_cast<PageColour>(mixed) << shift;
    }
    return faded;
}

} // namespace keldrin
