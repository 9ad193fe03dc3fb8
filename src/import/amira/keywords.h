#pragma once

#include "import/amira/record.h"
#include "text/columns.h"
#include "text/value_readers.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// Keywords of AMIRA files and of their channel files. One pair on a line that begins with a slash,
// or several on a line without one:
//
//   /KEYWORD: value                        ":" or "=" at most 32 bytes from the slash
//   KEYWORD:value KEYWORD=value ...        at most 32 pairs; a blank ends a value, double quotes
//                                          protect blanks
//
// Case does not count in keywords; old names are known by an alias table, which serves the column
// labels too. Unknown keywords are ignored. A keyword without a value, or with a
// "*", leaves what was in force; one whose value cannot be read takes the substitute of its table
// row (reported by the reader of the value).
//
// returns  0; 1 when a keyword was not taken (reported); 2 or more when the file must not be read
//          on (reported)

inline constexpr int StopsFile = 2;

/// Labels and keywords in use for others, sorted by label.
std::span<const LabelAlias> amiraAliases();

/// The keyword in use for one as it stands in a file: in capitals and without its alias.
std::string amiraKeyword(std::string_view keyword);

/// What the manual says of a keyword.
struct AmiraKeywordFacts {
    std::string_view keyword;
    std::string initial; ///< in force before the file has said anything; blank: nothing
    float least = 0.0F;  ///< of a size
};

/// The keywords in use whose values are read, but for the numbered ones LV and TIMES.
std::vector<AmiraKeywordFacts> amiraKeywords();

/// True when the value of a keyword is read.
bool isAmiraKeyword(std::string_view keyword);

/// Reads one pair into the record. Logs it as it stands.
int AMR_Read_Keyword_Value(const RecordLine &where, std::string_view keyword,
                           std::string_view value, AmiraRecord &record);

/// Reads the pairs of a line without a slash. Logs that it does.
int AMR_Read_Keyword_Record(const RecordLine &where, AmiraRecord &record);

/// What a line of a data file or channel file is by its first characters.
enum class AmiraLine { Blank, Comment, Slash, Pairs, Other };

/// The kind of a left-adjusted line. Inside the header and in channel files a slash and a blank
/// begin a comment.
AmiraLine classifyAmiraLine(std::string_view line, bool slashBlankIsComment);

/// Reads a line of kind Slash or Pairs; a slash line without a pair is ignored.
int AMR_Read_Keyword_Line(const RecordLine &where, AmiraLine kind, AmiraRecord &record);

} // namespace keldrin
