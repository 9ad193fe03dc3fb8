#include "import/amira/keywords.h"

#include "base/ascii.h"
#include "messages/message_log.h"

#include <algorithm>
#include <string>
#include <vector>

namespace keldrin {

namespace {

constexpr std::string_view Marks = ":=";
constexpr std::size_t MostPairs = 32;
constexpr std::size_t LongestKeyword = 32; ///< on a slash line, with its mark
constexpr std::size_t LongestValue = 256;

bool isMark(char c) {
    return Marks.find(c) != std::string_view::npos;
}

/// The words of a line: what stands between blanks or tabs, which double quotes protect.
struct PairWords {
    std::vector<std::string> words;
    bool quoteIsOpen = false;
};

PairWords wordsOf(std::string_view line) {
    PairWords found;
    std::string word;
    for (const char c : line) {
        found.quoteIsOpen = found.quoteIsOpen != (c == '"');
        if ((c == ' ' || c == '\t') && !found.quoteIsOpen) {
            if (!word.empty()) {
                found.words.push_back(std::move(word));
            }
            word.clear();
        } else {
            word += c;
        }
    }
    if (!word.empty()) {
        found.words.push_back(std::move(word));
    }
    return found;
}

// The first mark outside quotes, from the second character on.
std::size_t markIn(std::string_view word) {
    bool quoted = false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        quoted = quoted != (word[i] == '"');
        if (i > 0 && !quoted && isMark(word[i])) {
            return i;
        }
    }
    return std::string_view::npos;
}

// A mark stands alone or at either end of a word when blanks surround it; a list goes on after its
// comma.
std::vector<std::string> joinedWords(std::vector<std::string> words) {
    std::vector<std::string> joined;
    for (std::string &word : words) {
        const bool continues =
            !joined.empty() && (isMark(word.front()) ||
                                ((isMark(joined.back().back()) || joined.back().back() == ',') &&
                                 markIn(word) == std::string_view::npos));
        if (continues) {
            joined.back() += word;
        } else {
            joined.push_back(std::move(word));
        }
    }
    return joined;
}

void warnOfRecord(const RecordLine &where, std::string_view what) {
    ReportWarning({"AMR_Read_Keyword_Record.WARNING: " + std::string(what) + " on record " +
                       std::to_string(where.number),
                   where.line});
}

} // namespace

int AMR_Read_Keyword_Record(const RecordLine &where, AmiraRecord &record) {
    ReportInfoLine("Reading amr file keyword record.");
    PairWords found = wordsOf(where.line);
    std::vector<std::string> words = joinedWords(std::move(found.words));
    if (found.quoteIsOpen) {
        warnOfRecord(where, "a quote is not closed");
    }
    if (words.size() > MostPairs) {
        warnOfRecord(where,
                     "more than " + std::to_string(MostPairs) + " words; the others are not read,");
        words.resize(MostPairs);
    }
    int status = 0;
    bool known = false;
    bool dropped = false;
    for (const std::string_view word : words) {
        const std::size_t mark = markIn(word);
        if (mark == std::string_view::npos) {
            dropped = dropped || known;
            continue;
        }
        const std::string_view keyword = word.substr(0, mark);
        known = known || isAmiraKeyword(keyword);
        status =
            std::max(status, AMR_Read_Keyword_Value(where, keyword, word.substr(mark + 1), record));
        if (status >= StopsFile) {
            return status;
        }
    }
    if (dropped) {
        warnOfRecord(where, "text without a keyword is passed over");
    }
    return status;
}

AmiraLine classifyAmiraLine(std::string_view line, bool slashBlankIsComment) {
    if (line.find_first_not_of(" \t") == std::string_view::npos) {
        return AmiraLine::Blank;
    }
    const char first = line.front();
    if (first == '\\' || first == '!') {
        return AmiraLine::Comment;
    }
    if (first == '/') {
        const bool blankFollows = line.size() < 2 || line[1] == ' ' || line[1] == '\t';
        return blankFollows && slashBlankIsComment ? AmiraLine::Comment : AmiraLine::Slash;
    }
    return line.find_first_of(Marks, 1) != std::string_view::npos ? AmiraLine::Pairs
                                                                  : AmiraLine::Other;
}

int AMR_Read_Keyword_Line(const RecordLine &where, AmiraLine kind, AmiraRecord &record) {
    if (kind == AmiraLine::Pairs) {
        return AMR_Read_Keyword_Record(where, record);
    }
    const std::string_view pair = where.line.substr(1);
    const std::size_t mark = pair.find_first_of(Marks);
    if (mark == std::string_view::npos || mark < 1 || mark >= LongestKeyword) {
        return 0;
    }
    return AMR_Read_Keyword_Value(where, trimLeft(pair.substr(0, mark)),
                                  cutText(pair.substr(mark + 1), LongestValue), record);
}

} // namespace keldrin
