#include "projectfile/control_group.h"

#include "base/ascii.h"

#include <algorithm>
#include <charconv>

namespace keldrin {

namespace {

constexpr std::string_view Opening = "&KELDRIN";

constexpr bool isBlankCharacter(char c) {
    return c == ' ' || c == '\t';
}
constexpr bool isSeparator(char c) {
    return isBlankCharacter(c) || c == ',';
}
constexpr bool isQuote(char c) {
    return c == '\'' || c == '"';
}
constexpr bool isNameCharacter(char c) {
    return (upperOf(c) >= 'A' && upperOf(c) <= 'Z') || isDigit(c) || c == '_';
}

/// A position in one line.
struct Cursor {
    std::string_view line;
    std::size_t at = 0;

    [[nodiscard]] bool atEnd() const { return at >= line.size(); }
    [[nodiscard]] char here() const { return atEnd() ? '\0' : line[at]; }
    [[nodiscard]] std::string_view rest() const { return line.substr(std::min(at, line.size())); }

    template <class Test>
    std::string_view take(Test test) {
        const std::size_t start = at;
        while (!atEnd() && test(line[at])) {
            ++at;
        }
        return line.substr(start, at - start);
    }
    bool takeOne(char wanted) {
        const bool found = !atEnd() && line[at] == wanted;
        at += found ? 1 : 0;
        return found;
    }
};

/// `Name =` or `Name (i) =` as it was written.
struct Assignment {
    std::string_view name;
    bool indexed = false;
    int index = 0; ///< from 1; 0 when out of every range
};

bool takeIndex(Cursor &cursor, Assignment &found) {
    cursor.take(isBlankCharacter);
    const std::string_view digits = cursor.take(isDigit);
    cursor.take(isBlankCharacter);
    found.indexed = true;
    std::from_chars(digits.data(), digits.data() + digits.size(), found.index);
    return !digits.empty() && cursor.takeOne(')');
}

/// Takes an assignment's left side; false, with the cursor anywhere, when none stands here.
bool takeAssignment(Cursor &cursor, Assignment &found) {
    found = {};
    found.name = cursor.take(isNameCharacter);
    cursor.take(isBlankCharacter);
    if (found.name.empty() || isDigit(found.name.front()) ||
        (cursor.takeOne('(') && !takeIndex(cursor, found))) {
        return false;
    }
    cursor.take(isBlankCharacter);
    return cursor.takeOne('=');
}

bool knownAssignmentFollows(Cursor cursor) {
    Assignment next;
    return takeAssignment(cursor, next) && findControlRow(next.name) != nullptr;
}

/// The variable that takes the next values.
struct Target {
    const ControlRow *row = nullptr;
    int element = 0;              ///< next one, from 0
    int end = 0;                  ///< after the last one
    bool takesList = false;       ///< a whole array
    bool valueSinceComma = false; ///< a comma now separates and stands for no null value
};

/// Whether the quote in front of the cursor ends its text.
bool endsText(Cursor cursor, const Target &target) {
    const bool apart = !cursor.take(isSeparator).empty();
    switch (cursor.here()) {
    case '!':
        return true;
    case '/':
        ++cursor.at;
        cursor.take(isBlankCharacter);
        return cursor.atEnd();
    case '\'':
    case '"':
        return apart && target.takesList;
    default:
        return cursor.atEnd() || knownAssignmentFollows(cursor);
    }
}

/// The text after an opening quote, up to the quote that ends it or to the end of the line.
std::string_view takeText(Cursor &cursor, const Target &target) {
    const char quote = cursor.line[cursor.at++];
    const std::size_t start = cursor.at;
    for (std::size_t end = start; end < cursor.line.size(); ++end) {
        if (cursor.line[end] == quote && endsText({cursor.line, end + 1}, target)) {
            cursor.at = end + 1;
            return cursor.line.substr(start, end - start);
        }
    }
    cursor.at = cursor.line.size();
    return cursor.line.substr(start);
}

/// A repeat count with its asterisk, 1 where there is none. False for a count of 0 or beyond all.
bool takeRepeatCount(Cursor &cursor, int &count) {
    Cursor ahead = cursor;
    const std::string_view digits = ahead.take(isDigit);
    count = 1;
    if (digits.empty() || !ahead.takeOne('*')) {
        return true;
    }
    cursor = ahead;
    const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), count);
    return error == std::errc{} && count > 0;
}

bool storeRepeated(ControlGroup &group, Target &target, int count, std::string_view value,
                   bool isText) {
    if (count > target.end - target.element) {
        return false;
    }
    for (; count > 0; --count, ++target.element) {
        const bool stored = isText ? storeText(group, *target.row, target.element, value)
                                   : storeNumber(group, *target.row, target.element, value);
        if (!stored) {
            return false;
        }
    }
    return true;
}

bool takeValue(Cursor &cursor, ControlGroup &group, Target &target) {
    int count = 1;
    if (target.row == nullptr || !takeRepeatCount(cursor, count)) {
        return false;
    }
    target.valueSinceComma = true;
    if (isQuote(cursor.here())) {
        return storeRepeated(group, target, count, takeText(cursor, target), true);
    }
    const std::string_view token =
        cursor.take([](char c) { return !isSeparator(c) && c != '/' && c != '!'; });
    if (token.find_first_not_of('*') == std::string_view::npos) {
        target.element += std::min(count, target.end - target.element);
        return true;
    }
    return storeRepeated(group, target, count, token, false);
}

void takeComma(Cursor &cursor, Target &target) {
    ++cursor.at;
    if (!target.valueSinceComma) {
        target.element = std::min(target.element + 1, target.end);
    }
    target.valueSinceComma = false;
}

bool aimAt(const Assignment &assignment, Target &target) {
    target = {};
    target.row = findControlRow(assignment.name);
    if (target.row == nullptr) {
        return false;
    }
    target.end = elementCount(*target.row);
    target.takesList = !assignment.indexed && arrayLength(*target.row) > 0;
    if (assignment.indexed) {
        target.element = assignment.index - 1;
        target.end = assignment.index;
        return assignment.index >= 1 && assignment.index <= arrayLength(*target.row);
    }
    return true;
}

/// Parses what stands in one line. Sets `closed` at the group's end; false on a fault.
bool parseLine(Cursor &cursor, ControlGroup &group, Target &target, bool &closed) {
    while (true) {
        cursor.take(isBlankCharacter);
        const char c = cursor.here();
        if (cursor.atEnd() || c == '!') {
            return true;
        }
        if (c == '/') {
            closed = true;
            return true;
        }
        bool good = true;
        if (c == ',') {
            takeComma(cursor, target);
        } else if (isNameCharacter(c) && !isDigit(c)) {
            Assignment assignment;
            good = takeAssignment(cursor, assignment) && aimAt(assignment, target);
        } else {
            good = takeValue(cursor, group, target);
        }
        if (!good) {
            return false;
        }
    }
}

/// The cursor after "&KELDRIN", when this line opens the group.
bool opensGroup(std::string_view line, Cursor &cursor) {
    cursor = {line};
    cursor.take(isBlankCharacter);
    if (!sameIgnoringCase(cursor.rest().substr(0, Opening.size()), Opening)) {
        return false;
    }
    cursor.at += Opening.size();
    return !isNameCharacter(cursor.here());
}

} // namespace

GroupStatus readControlGroup(LineReader &reader, ControlGroup &group, std::string &faultyLine) {
    bool opened = false;
    bool closed = false;
    Target target;
    std::string_view line;
    LineStatus status = LineStatus::Line;
    while (!closed && (status = reader.next(line)) != LineStatus::End) {
        Cursor cursor{line};
        opened = opened || opensGroup(line, cursor);
        if (status == LineStatus::Fault || (opened && !parseLine(cursor, group, target, closed))) {
            faultyLine = line;
            return GroupStatus::Faulty;
        }
    }
    return closed ? GroupStatus::Read : GroupStatus::EndOfFile;
}

char quoteFor(std::string_view text, char preferred) {
    const auto survivesIn = [text](char quote) {
        const std::string written = quote + std::string(text) + quote;
        Cursor cursor{written};
        return takeText(cursor, {}) == text;
    };
    const char other = preferred == '"' ? '\'' : '"';
    return !survivesIn(preferred) && survivesIn(other) ? other : preferred;
}

} // namespace keldrin
