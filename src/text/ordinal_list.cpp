#include "text/ordinal_list.h"

#include "base/ascii.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace keldrin {

namespace {

bool readOrdinal(std::string_view word, int &ordinal) {
    word = trimBlanks(word);
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), ordinal);
    return error == std::errc{} && end == word.data() + word.size() && ordinal >= 1;
}

std::optional<OrdinalRange> readRange(std::string_view word) {
    const std::size_t dash = word.find('-');
    OrdinalRange range;
    const bool read =
        readOrdinal(word.substr(0, dash), range.first) &&
        readOrdinal(dash == std::string_view::npos ? word : word.substr(dash + 1), range.last);
    return read && range.first <= range.last ? std::optional(range) : std::nullopt;
}

} // namespace

std::optional<std::vector<OrdinalRange>> readOrdinalList(std::string_view list) {
    std::vector<OrdinalRange> ranges;
    for (;;) {
        const std::size_t comma = list.find(',');
        const std::optional<OrdinalRange> range = readRange(list.substr(0, comma));
        if (!range) {
            return std::nullopt;
        }
        ranges.push_back(*range);
        if (comma == std::string_view::npos) {
            return ranges;
        }
        list.remove_prefix(comma + 1);
    }
}

bool isInList(std::span<const OrdinalRange> list, int ordinal) {
    return std::any_of(list.begin(), list.end(), [ordinal](const OrdinalRange &range) {
        return ordinal >= range.first && ordinal <= range.last;
    });
}

} // namespace keldrin
