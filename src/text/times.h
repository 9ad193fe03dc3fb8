#pragma once

#include "text/value_readers.h"

#include <string>

namespace keldrin {

// Times of day in hours, out of text cells and into text. Statuses and arguments as in
// value_readers.h, where Val_Read_Hours stands. No keyword holds the other forms; their readers and
// the texts of hours complete the documented kinds of cells.

int Cell_to_Hours(std::string_view cell, double defaultValue, double &result);

/// Two characters of hours, two of minutes and the seconds, without separators.
int Cell_to_HHMMSS(std::string_view cell, double defaultValue, double &result);

int Val_Read_HHMMSS(const RecordLine &record, std::string_view cell, std::string_view label,
                    double defaultValue, double &result);

/// hh:mm:ss.s, negative with a minus sign in the hours, or without a colon seconds alone. Seconds
/// that cannot be read are reported but leave the default with status 0.
int Val_Read_TimeOfDay(const RecordLine &record, std::string_view cell, std::string_view label,
                       double defaultValue, double &result);

/// "hh:mm:ss.sss", rounded to milliseconds, with a minus sign in front below 0 and three digits of
/// hours from 100 up. Hours from 1000 up and what is no number are reported and give a blank text.
/// decimals  of the seconds that are kept, 0 to 3
void dHours_to_sHHMMSS(double hours, int decimals, std::string &text);

/// The same without colons.
void dHours_to_HHMMSS(double hours, int decimals, std::string &text);
void dHours_to_HHMMSS(float hours, int decimals, std::string &text);

} // namespace keldrin
