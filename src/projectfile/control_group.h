#pragma once

#include "base/line_reader.h"
#include "projectfile/control_table.h"

#include <string>
#include <string_view>

namespace keldrin {

// The group of a project file:
//
//   &KELDRIN                      begins the group; lines before it are skipped
//   Name=value, Name(i)=value     names without regard to case, i from 1, blanks around both
//   Name=value,value,3*value      an array from its first element; a count repeats the value
//   'text' or "text"              see below
//   , or blank or line end        separates values; nothing between two commas, a lone count "3*"
//                                 and a value of asterisks leave the variable as it was
//   ! comment                     to the end of the line
//   /                             ends the group; the rest of the line is ignored
//
// Text is not escaped, so a quote may stand inside it. A quote ends a text where what follows,
// blanks and commas skipped, is the end of the line, a "/" that is the line's last character, a "!"
// or a known name with "="; inside a list of texts also where another quote follows at least one
// blank or comma. A text ends with its line in any case.

/// Longest line of the group that is kept, in bytes.
inline constexpr std::size_t MostGroupLine = 65536;

enum class GroupStatus {
    Read,      ///< the next line of the reader is the one after the closing "/"
    Faulty,    ///< no group syntax: an unknown name, a bad value, too many values, a bad index
    EndOfFile, ///< the file ended before the group was closed, or began none
};

/// Reads one group; values stand as far as they were parsed.
/// faultyLine  out: the line that is Faulty
GroupStatus readControlGroup(LineReader &reader, ControlGroup &group, std::string &faultyLine);

/// The quote in which a text is written: `preferred`, unless the reader would end the text before
/// its end there and not in the other quote, as in `the "old" ! line`.
char quoteFor(std::string_view text, char preferred);

} // namespace keldrin
