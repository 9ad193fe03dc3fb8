#pragma once

#include <cstdint>
#include <string_view>

namespace keldrin {

/// What a free-form read of one value found.
enum class FreeForm {
    Value,  ///< a number, stored
    Null,   ///< a comma or slash before any value: the target is left alone
    Failed, ///< blank text, no number, or one that overflows the target: the target is left alone
};

// One value of a blank-or-comma separated list. Leading blanks and tabs are skipped; the value ends
// at the first blank, tab, comma or slash, and what follows is not looked at. Reals take a missing
// point and E or D exponents in either case, also an exponent of a bare sign ("1+5"). NaN,
// infinities and hexadecimal are no numbers. The locale plays no part.

FreeForm readFreeForm(std::string_view text, float &value);
FreeForm readFreeForm(std::string_view text, double &value);
FreeForm readFreeForm(std::string_view text, std::int32_t &value);
FreeForm readFreeForm(std::string_view text, std::int64_t &value);

/// The same for a text that is a number from its first character to its last. False, with the
/// target left alone, for any other and for one that overflows.
bool readWholeNumber(std::string_view text, float &value);
bool readWholeNumber(std::string_view text, double &value);

} // namespace keldrin
