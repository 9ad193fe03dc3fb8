#include "base/utf8.h"

#include <array>
#include <cstddef>

namespace keldrin {

namespace {

// Length of the character that a byte begins; 0 for one that begins no character.
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

std::string validUtf8(std::string_view text) {
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    std::string valid;
    while (!text.empty()) {
        const std::string_view before = text;
        const bool good = takeCharacter(text) != ReplacementCharacter;
        valid += good ? before.substr(0, before.size() - text.size()) : replacement;
    }
    return valid;
}

} // namespace keldrin
