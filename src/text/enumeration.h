#pragma once

#include "base/fixed_text.h"

#include <span>
#include <string_view>
#include <vector>

namespace keldrin {

/// Words that the user was asked about, with the answers, for the whole run.
struct EnumerationMemo {
    static constexpr std::size_t MostEntries = 32;
    struct Entry {
        FixedText<64> text;
        int answer = 0; ///< the index chosen, or its negative (or 0) after Cancel
    };
    std::vector<Entry> entries; ///< oldest first
};

EnumerationMemo &enumerationMemo();

/// The 1-based index of a word in a fixed enumeration. A word that matches no name is put to the
/// user once (questions.h) and the answer is remembered for the rest of the run.
/// label    name of the value, for the user
/// index    in: the first choice; out: the index, unchanged unless matched
/// returns  -1 nothing to match (blank or "*"), 0 matched, 2 the user chose none, now or before
int Str_to_iEnumeration(std::string_view text, std::string_view label,
                        std::span<const std::string_view> names, int &index);

} // namespace keldrin
