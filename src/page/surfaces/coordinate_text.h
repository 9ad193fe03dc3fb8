#pragma once

#include <array>
#include <charconv>
#include <string>
#include <string_view>

namespace keldrin {

/// Appends a number with a fixed count of decimals, a point, and no sign before zero. A number
/// that is not finite or has more than 40 digits gives "0".
inline void appendCoordinate(std::string &out, float value, int decimals) {
    std::array<char, 48> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                       std::chars_format::fixed, decimals);
    std::string_view text(digits.data(), static_cast<std::size_t>(written.ptr - digits.data()));
    if (written.ec != std::errc() || text.find_first_of("in") != std::string_view::npos) {
        text = "0";
    }
    if (text.find_first_of("123456789") == std::string_view::npos && text.front() == '-') {
        text.remove_prefix(1);
    }
    out += text;
}

} // namespace keldrin
