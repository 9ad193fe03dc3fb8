#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace keldrin {

/// Turns what a program writes to its console into lines of text, as a user would read them there.
///
/// A line ends in LF or CRLF. What follows a carriage return stands in place of what was before it,
/// so a progress line that is written over and over gives its last state; a backspace takes a
/// character back. Tabs become blanks up to the next eighth column. Colours and other escape
/// sequences and all other control characters are left out, and so are blank lines. A line of more
/// than MostBytes is cut to them, at the start of a character.
class ConsoleLines {
  public:
    static constexpr std::size_t MostBytes = 1024;

    /// line  gets each line; may be empty
    explicit ConsoleLines(std::function<void(std::string_view)> line) : line_(std::move(line)) {}

    /// Takes the next bytes, which may begin and end anywhere.
    void take(std::string_view bytes);

    /// Ends a last line that lacks its end.
    void finish();

  private:
    enum class Place {
        Text,
        Escape,   ///< after an ESC
        Sequence, ///< after ESC [, up to a letter
        String,   ///< after ESC ], up to a BEL or the next ESC
    };

    void takeCharacter(char c);
    void takeText(char c);
    void takeEscape(char c);
    void append(std::string_view text);
    void takeBack();

    std::function<void(std::string_view)> line_;
    std::string text_;
    Place place_ = Place::Text;
    bool returned_ = false; ///< what comes next is written over the text
};

} // namespace keldrin
