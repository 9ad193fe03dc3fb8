#include "page/text_metrics.h"

#include "base/utf8.h"

#include <array>
#include <cstdint>

namespace keldrin {

namespace {

constexpr unsigned FirstInTable = 32;
constexpr int DefaultAdvance = 556;

// Advance widths of the characters 32 to 126 in thousandths of an em.
constexpr std::array<std::int16_t, 95> Advances = {
    278,  278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278, // blank to /
    556,  556, 556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, // 0 to ?
    1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778, // @ to O
    667,  778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556, // P to _
    333,  556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556, // ` to o
    556,  556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584};     // p to ~

int advanceOf(char32_t character) {
    if (character < FirstInTable || character >= FirstInTable + Advances.size()) {
        return DefaultAdvance;
    }
    return Advances[character - FirstInTable];
}

} // namespace

float textWidthInEms(std::string_view text) {
    int width = 0;
    while (!text.empty()) {
        width += advanceOf(takeCharacter(text));
    }
    return static_cast<float>(width) / 1000.0F;
}

} // namespace keldrin
