#pragma once

#include "toolkit/dialog_spec.h"

#include <optional>
#include <string>
#include <string_view>

namespace keldrin {

// What a user may type into a field of numbers, whatever the locale: a sign, digits and, for reals,
// one decimal point or comma and an exponent after E or D; blanks around it do not count. A field
// of integers takes a sign and digits only.

/// The number of a typed text in the width of its control; none when it is no number.
/// A number too large for the width is given as an infinity, one too small as zero.
std::optional<double> typedNumber(std::string_view text, ControlKind kind);

/// A number as a control of that kind shows it, without blanks around it.
/// format  edit descriptor; blank: the shortest form
std::string shownNumber(double value, ControlKind kind, std::string_view format);

} // namespace keldrin
