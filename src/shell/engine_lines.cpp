#include "shell/engine_lines.h"

#include <array>
#include <charconv>
#include <string>

namespace keldrin {

namespace {

// Reads an integer from the front of a text and takes it away; false where none stands.
bool takeInteger(std::string_view &text, int &value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) {
        return false;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

bool takeWord(std::string_view &text, std::string_view word) {
    const bool there = text.substr(0, word.size()) == word;
    text.remove_prefix(there ? word.size() : 0);
    return there;
}

} // namespace

std::string_view withoutEngineName(std::string_view line) {
    takeWord(line, "rkeldrin: ");
    return line;
}

bool isEngineSummary(std::string_view line) {
    std::string_view rest = withoutEngineName(line);
    int iterations = 0;
    return takeInteger(rest, iterations) &&
           (takeWord(rest, " iterations, ") || takeWord(rest, " iteration, ")) &&
           (takeWord(rest, "median misfit ") || takeWord(rest, "no data to fit, "));
}

CommandProgress engineProgress(std::string_view line) {
    constexpr std::array<std::string_view, 2> counted = {"iteration ", "soundings "};
    const std::string_view words = withoutEngineName(line);
    for (const std::string_view what : counted) {
        std::string_view rest = words;
        int done = 0;
        int total = 0;
        if (takeWord(rest, what) && takeInteger(rest, done) && takeWord(rest, " of ") &&
            takeInteger(rest, total) && total > 0) {
            return {static_cast<double>(done), static_cast<double>(total), std::string(words)};
        }
    }
    return {};
}

} // namespace keldrin
