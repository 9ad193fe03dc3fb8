#include "text/columns.h"

#include "base/ascii.h"
#include "base/fixed_text.h"
#include "base/index.h"
#include "messages/message_log.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace keldrin {

namespace {

/// Blanks the double quotes (and tabs) of a cell, in place, and adjusts and cuts it.
std::string_view withoutQuotes(char *begin, char *end, std::size_t width) {
    std::replace_if(
        begin, end, [](char c) { return c == '"' || c == '\t'; }, ' ');
    const std::string_view cell(begin, end);
    return trimRight(cutText(trimLeft(cell), width));
}

/// Tabs become blanks, and blanks before a comma go after it, also between quotes.
void settleSeparators(std::string &line) {
    std::size_t firstBlank = 0; // of the run of blanks that ends at the current character
    for (std::size_t i = 0; i < line.size(); ++i) {
        char &c = line[i];
        if (c == '\t') {
            c = ' ';
        } else if (c == ',' && firstBlank < i) {
            line[firstBlank++] = ',';
            c = ' ';
        } else if (c != ' ') {
            firstBlank = i + 1;
        }
    }
}

/// The cells of one line while it is scanned.
struct CellScan {
    SplitCells &out;
    std::size_t most;
    std::size_t width;

    [[nodiscard]] bool full() const { return out.cells.size() >= most; }
    void add(char *begin, char *end) {
        if (std::find(begin, end, '"') != end) {
            out.cells.push_back(withoutQuotes(begin, end, width));
            return;
        }
        add({begin, end});
    }
    void add(std::string_view cell) {
        out.cells.push_back(cell.size() <= width ? cell : cutText(cell, width));
    }
};

void scanQuotedColumns(char *at, char *end, CellScan &scan) {
    bool inQuote = false;
    bool atSeparator = true;
    char *first = at; // of the cell that is being scanned
    for (; at != end && !scan.full(); ++at) {
        if (*at == '"') {
            inQuote = !inQuote;
            atSeparator = atSeparator && !inQuote;
        } else if (inQuote) {
            continue;
        } else if (*at == ',' || (*at == ' ' && !atSeparator)) {
            scan.add(first, at);
            first = at + 1;
            atSeparator = true;
        } else if (*at == ' ') {
            first = at + 1;
        } else {
            atSeparator = false;
        }
    }
    if (!atSeparator && !scan.full()) {
        scan.add(first, end);
    }
}

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

const char *passBlanks(const char *at, const char *end) {
    while (at != end && isBlank(*at)) {
        ++at;
    }
    return at;
}

// Without quotes the cells stand in the line as they are. A comma belongs to the cell before it,
// whatever blanks are between them.
void scanPlainColumns(const char *at, const char *end, CellScan &scan) {
    at = passBlanks(at, end);
    while (at != end && !scan.full()) {
        const char *const first = at;
        while (at != end && *at != ',' && !isBlank(*at)) {
            ++at;
        }
        scan.add({first, at});
        at = passBlanks(at, end);
        if (at != end && *at == ',') {
            at = passBlanks(at + 1, end);
        }
    }
}

std::size_t mostCells(int maxCols) {
    return asIndex(std::max(0, maxCols));
}

} // namespace

void Str_Split_Columns(std::string_view line, int maxCols, std::size_t width, SplitCells &out) {
    out.cells.clear();
    out.work.assign(trimBlanks(line));
    CellScan scan{out, mostCells(maxCols), width};
    char *const begin = out.work.data();
    char *const end = begin + out.work.size();
    if (holds(out.work, "\"")) {
        settleSeparators(out.work);
        scanQuotedColumns(begin, end, scan);
    } else {
        scanPlainColumns(begin, end, scan);
    }
}

void Str_Split_Csv(std::string_view line, int maxCols, std::size_t width, SplitCells &out) {
    Str_Split_Delimited(line, ",", maxCols, width, out);
}

void Str_Split_Delimited(std::string_view line, std::string_view delimiters, int maxCols,
                         std::size_t width, SplitCells &out) {
    out.cells.clear();
    out.work.assign(trimRight(line));
    bool inQuote = false;
    char *const end = out.work.data() + out.work.size();
    char *first = out.work.data();
    for (char *at = first; at != end; ++at) {
        inQuote = inQuote != (*at == '"');
        const bool last = at + 1 == end; // a delimiter there is part of the last cell
        if (!last && (inQuote || !holds(delimiters, {at, 1}))) {
            continue;
        }
        if (out.cells.size() >= mostCells(maxCols)) {
            ReportError({"WARNING: more than " + std::to_string(maxCols) + " columns in csv file.",
                         "Extra columns will be dropped."});
            return;
        }
        out.cells.push_back(withoutQuotes(first, last ? end : at, width));
        first = at + 1;
    }
}

int Str_Trailing_Integer(std::string_view text, int &value) {
    value = 1;
    const auto digit = std::find_if(text.rbegin(), text.rend(), isDigit);
    if (digit == text.rend()) {
        return -1;
    }
    const auto before = std::find_if_not(digit, text.rend(), isDigit);
    const char *const begin = text.data() + (text.rend() - before);
    const char *const end = text.data() + (text.rend() - digit);
    return std::from_chars(begin, end, value).ec == std::errc{} ? 0 : 1;
}

} // namespace keldrin
