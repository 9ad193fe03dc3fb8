#include "text/ordinal_list.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace keldrin {
namespace {

/// The ordinals up to 9 that a list names, "none" for a text that is no list.
std::string named(std::string_view text) {
    const auto list = readOrdinalList(text);
    if (!list) {
        return "none";
    }
    std::string digits;
    for (int ordinal = 0; ordinal <= 9; ++ordinal) {
        digits += isInList(*list, ordinal) ? std::to_string(ordinal) : "";
    }
    return digits;
}

TEST(OrdinalList, HoldsBothEndsOfItsRanges) {
    const std::pair<const char *, const char *> cases[] = {{"3", "3"},
                                                           {"2-4", "234"},
                                                           {"1-3,9", "1239"},
                                                           {" 5 - 6 , 2 ", "256"},
                                                           {"7-7", "7"},
                                                           {"3-5,4-6", "3456"},
                                                           {"12", ""},
                                                           {"4-2", "none"},
                                                           {"0", "none"},
                                                           {"0-3", "none"},
                                                           {"-3", "none"},
                                                           {"3-", "none"},
                                                           {"1,,2", "none"},
                                                           {"1,", "none"},
                                                           {"", "none"},
                                                           {"1;2", "none"},
                                                           {"1-2-3", "none"},
                                                           {"1.5", "none"},
                                                           {"99999999999", "none"}};
    for (const auto &[text, expected] : cases) {
        EXPECT_EQ(named(text), expected) << '[' << text << ']';
    }
}

} // namespace
} // namespace keldrin
