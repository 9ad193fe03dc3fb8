#pragma once

#include "text/value_readers.h"

namespace keldrin {

// Numbers out of cells that hold other characters too, such as "L100N" and "12.5m". Blanks and
// tabs are taken out, 16 characters are looked at, and of these the ones that a number can be made
// of are read in free form. Statuses and arguments as in value_readers.h. No keyword calls the
// Val_Read forms; they complete the documented kinds of cells.

int Cell_to_NumberInText(std::string_view cell, float defaultValue, float &result);
int Cell_to_Digits(std::string_view cell, std::int32_t defaultValue, std::int32_t &result);

/// Where no character of a number remains this core fails with the place of the first letter in
/// the alphabet, from 0, in `result`.
int Cell_to_NumberInText8(std::string_view cell, double defaultValue, double &result);

/// A cell without a character of a number leaves the default with status 0.
int Val_Read_NumberInText(const RecordLine &record, std::string_view cell, std::string_view label,
                          float defaultValue, float &result);

/// A cell without a character of a number fails.
int Val_Read_NumberInText8(const RecordLine &record, std::string_view cell, std::string_view label,
                           double defaultValue, double &result);

} // namespace keldrin
