#include "toolkit/console_lines.h"

#include "base/fixed_text.h"

namespace keldrin {

namespace {

constexpr char Escape = '\x1B';
constexpr char Bell = '\a';
constexpr char Delete = '\x7F';
constexpr std::size_t TabWidth = 8;
constexpr std::size_t LongestCharacter = 4; // bytes

bool isControl(char c) {
    return static_cast<unsigned char>(c) < 0x20U || c == Delete;
}

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

} // namespace

void ConsoleLines::take(std::string_view bytes) {
    for (const char c : bytes) {
        if (c == '\n') {
            finish();
        } else {
            takeCharacter(c);
        }
    }
}

void ConsoleLines::finish() {
    const std::string_view line = trimRight(cutText(text_, MostBytes));
    if (line_ && !line.empty()) {
        line_(line);
    }
    text_.clear();
    returned_ = false;
    place_ = Place::Text;
}

void ConsoleLines::takeCharacter(char c) {
    if (c == '\r') {
        returned_ = true;
        place_ = Place::Text;
        return;
    }
    if (returned_) {
        text_.clear();
        returned_ = false;
    }
    if (place_ == Place::Text) {
        takeText(c);
    } else {
        takeEscape(c);
    }
}

void ConsoleLines::takeText(char c) {
    if (c == Escape) {
        place_ = Place::Escape;
    } else if (c == '\b') {
        takeBack();
    } else if (c == '\t') {
        append(std::string(TabWidth - text_.size() % TabWidth, ' '));
    } else if (!isControl(c)) {
        append({&c, 1});
    }
}

void ConsoleLines::takeEscape(char c) {
    switch (place_) {
    case Place::Escape:
        place_ = c == '[' ? Place::Sequence : c == ']' ? Place::String : Place::Text;
        break;
    case Place::Sequence:
        place_ = c >= '@' && c <= '~' ? Place::Text : Place::Sequence;
        break;
    default:
        place_ = c == Bell ? Place::Text : c == Escape ? Place::Escape : Place::String;
        break;
    }
}

// Somewhat more than fits is kept, so that the cut finds where a character begins.
void ConsoleLines::append(std::string_view text) {
    if (text_.size() < MostBytes + LongestCharacter) {
        text_ += text;
    }
}

void ConsoleLines::takeBack() {
    while (!text_.empty() && continuesCharacter(text_.back())) {
        text_.pop_back();
    }
    if (!text_.empty()) {
        text_.pop_back();
    }
}

} // namespace keldrin
