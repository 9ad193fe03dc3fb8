#include "page/text_metrics.h"

#include <array>
#include <cstddef>
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

// Length of the character that a byte begins; 0 for a byte that begins none.
std::size_t lengthFrom(unsigned char first) {
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xC2 && first <= 0xDF) {
        return 2;
    }
    if (first >= 0xE0 && first <= 0xEF) {
        return 3;
    }
    return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

// True for code points that UTF-8 must not hold in this length, or not at all.
bool isForbidden(char32_t character, std::size_t length) {
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    return character < smallest[length] || (character >= 0xD800 && character <= 0xDFFF) ||
           character > 0x10FFFF;
}

} // namespace

char32_t takeCharacter(std::string_view &text) {
    const auto byteAt = [&](std::size_t i) {
        return static_cast<unsigned char>(text[i]);
    };
    const std::size_t length = lengthFrom(byteAt(0));
    bool good = length > 0 && length <= text.size();
    char32_t character = length < 2 ? byteAt(0) : byteAt(0) & (0x7FU >> length);
    for (std::size_t i = 1; good && i < length; ++i) {
        good = (byteAt(i) & 0xC0U) == 0x80U;
        character = (character << 6U) | (byteAt(i) & 0x3FU);
    }
    if (!good || isForbidden(character, length)) {
        text.remove_prefix(1);
        return ReplacementCharacter;
    }
    text.remove_prefix(length);
    return character;
}

float textWidthInEms(std::string_view text) {
    int width = 0;
    while (!text.empty()) {
        width += advanceOf(takeCharacter(text));
    }
    return static_cast<float>(width) / 1000.0F;
}

} // namespace keldrin
