#include "toolkit/scripted/script_words.h"

#include "base/ascii.h"

#include <charconv>
#include <cmath>
#include <utility>

namespace keldrin {

namespace {

constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// Reads a quoted part from after its opening quote; false when it is left open.
bool takeQuoted(std::string_view &line, std::string &text) {
    while (!line.empty() && line.front() != '"') {
        const bool escape =
            line.size() > 1 && line[0] == '\\' && (line[1] == '"' || line[1] == '\\');
        text += escape ? line[1] : line[0];
        line.remove_prefix(escape ? 2 : 1);
    }
    if (line.empty()) {
        return false;
    }
    line.remove_prefix(1);
    return true;
}

// The length of the UTF-8 character that a text begins with; a stray byte counts as one.
std::size_t characterLength(std::string_view text) {
    std::size_t length = 1;
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) {
        ++length;
    }
    return length;
}

} // namespace

bool splitScriptWords(std::string_view line, std::vector<ScriptWord> &words) {
    for (;;) {
        while (!line.empty() && isBlank(line.front())) {
            line.remove_prefix(1);
        }
        if (line.empty()) {
            return true;
        }
        ScriptWord word;
        while (!line.empty() && !isBlank(line.front())) {
            const char c = line.front();
            line.remove_prefix(1);
            if (c != '"') {
                word.text += c;
                continue;
            }
            word.quoted = true;
            if (!takeQuoted(line, word.text)) {
                return false;
            }
        }
        words.push_back(std::move(word));
    }
}

bool readScriptInteger(std::string_view text, int &value) {
    if (text.size() > 1 && text.front() == '+' && isDigit(text[1])) {
        text.remove_prefix(1);
    }
    const char *end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    return error == std::errc{} && rest == end;
}

bool WordTaker::nextIs(std::string_view text) const {
    return !atEnd() && words_[next_].text == text;
}

bool WordTaker::nextIsQuoted() const {
    return !atEnd() && words_[next_].quoted;
}

bool WordTaker::nextIsNumber() const {
    int value = 0;
    return !atEnd() && readScriptInteger(words_[next_].text, value);
}

std::string WordTaker::word(std::string_view what) {
    if (atEnd()) {
        fail(std::string(what) + " is missing");
        return {};
    }
    return words_[next_++].text;
}

std::string WordTaker::rest(std::string_view what) {
    std::string text = word(what);
    while (!atEnd()) {
        text += ' ';
        text += words_[next_++].text;
    }
    return text;
}

int WordTaker::integer(std::string_view what, int low, int high) {
    const std::string text = word(what);
    int value = low;
    if (!readScriptInteger(text, value) || value < low || value > high) {
        fail(std::string(what) + " is no whole number from " + std::to_string(low) + " to " +
             std::to_string(high));
        return low;
    }
    return value;
}

double WordTaker::number(std::string_view what) {
    const std::string text = word(what);
    double value = 0.0;
    const char *end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc{} || rest != end || !std::isfinite(value)) {
        fail(std::string(what) + " is no number");
        return 0.0;
    }
    return value;
}

bool WordTaker::accept(std::string_view text) {
    const bool there = nextIs(text);
    next_ += there ? 1 : 0;
    return there;
}

std::size_t WordTaker::oneOf(const std::vector<std::string_view> &choices) {
    std::string listed;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (accept(choices[i])) {
            return i;
        }
        listed.append(i == 0 ? "" : i + 1 == choices.size() ? " or " : ", ").append(choices[i]);
    }
    fail(listed + " is expected");
    return 0;
}

void WordTaker::fail(std::string reason) {
    if (fault_.empty()) {
        fault_ = std::move(reason);
    }
}

bool matchesPattern(std::string_view text, std::string_view pattern) {
    std::size_t t = 0;
    std::size_t p = 0;
    std::size_t star = std::string_view::npos; // the last "*", and the text that it has taken up to
    std::size_t taken = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            taken = t;
        } else if (p < pattern.size() && pattern[p] == '?') {
            ++p;
            t += characterLength(text.substr(t));
        } else if (p < pattern.size() && pattern[p] == text[t]) {
            ++p;
            ++t;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            t = ++taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

} // namespace keldrin
