#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace keldrin {

/// A word of a scenario line.
struct ScriptWord {
    std::string text;
    bool quoted = false;
};

/// Splits a line at blanks and tabs. "..." keeps blanks, with \" and \\ inside; elsewhere a
/// backslash stands for itself.
/// returns  false when a quote is left open
bool splitScriptWords(std::string_view line, std::vector<ScriptWord> &words);

/// Takes the words of a line one after the other. The first thing that does not fit is kept as
/// the fault; from then on every taking gives nothing.
class WordTaker {
  public:
    explicit WordTaker(std::vector<ScriptWord> words) : words_(std::move(words)) {}

    [[nodiscard]] std::size_t left() const { return words_.size() - next_; }
    [[nodiscard]] bool atEnd() const { return left() == 0; }
    [[nodiscard]] const std::string &fault() const { return fault_; }
    [[nodiscard]] bool nextIs(std::string_view text) const;
    [[nodiscard]] bool nextIsQuoted() const;
    [[nodiscard]] bool nextIsNumber() const;

    /// The next word; `what` names it where it is missing.
    std::string word(std::string_view what);
    /// The words to the end of the line, joined by blanks.
    std::string rest(std::string_view what);
    int integer(std::string_view what, int low, int high);
    double number(std::string_view what);
    /// Takes the next word when it is `text`.
    bool accept(std::string_view text);
    /// The place of the next word in a list; 0 and a fault when it is not there.
    std::size_t oneOf(const std::vector<std::string_view> &choices);
    void fail(std::string reason);

  private:
    std::vector<ScriptWord> words_;
    std::size_t next_ = 0;
    std::string fault_;
};

/// An integer of digits with an optional sign and nothing else, within the 32-bit range.
bool readScriptInteger(std::string_view text, int &value);

/// Matches a whole text, where "*" stands for any run of characters and "?" for one.
bool matchesPattern(std::string_view text, std::string_view pattern);

} // namespace keldrin
