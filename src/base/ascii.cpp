#include "base/ascii.h"

#include "base/fixed_text.h"

#include <algorithm>
#include <iterator>

namespace keldrin {

std::string Str_Upper(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), upperOf);
    return upper;
}

std::string Str_No_Blanks(std::string_view text) {
    std::string kept;
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept),
                 [](char c) { return c != ' ' && c != '\t'; });
    return kept;
}

std::string_view trimLeft(std::string_view text) {
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    return text;
}

std::string_view trimBlanks(std::string_view text) {
    return trimLeft(trimRight(text));
}

bool sameIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return upperOf(x) == upperOf(y); });
}

} // namespace keldrin
