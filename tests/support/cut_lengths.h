#pragma once

#include "support/sanitizer.h"

#include <cstddef>
#include <random>
#include <string_view>
#include <vector>

namespace keldrin {

/// Lengths to which a text is cut: at the end of every line and at 100 places within lines, always
/// the same. Under a sanitizer, where every read takes ten times as long, one in four of them.
inline std::vector<std::size_t> cutLengths(std::string_view text) {
    constexpr std::size_t withinLines = 100;
    constexpr std::size_t oneIn = UnderSanitizer ? 4 : 1;
    std::vector<std::size_t> lengths = {0};
    std::size_t lines = 0;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == '\n' && ++lines % oneIn == 0) {
            lengths.push_back(i + 1);
        }
    }
    std::mt19937 random(1); // NOLINT(bugprone-random-generator-seed): the same on every run
    for (std::size_t i = 0; i < withinLines / oneIn; ++i) {
        lengths.push_back(random() % text.size());
    }
    return lengths;
}

} // namespace keldrin
