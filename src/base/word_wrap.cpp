#include "base/word_wrap.h"

#include "base/ascii.h"

#include <algorithm>

namespace keldrin {

namespace {

// The length of the first word; what is in square brackets is one word.
std::size_t wordLength(std::string_view text) {
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == ' ' && depth == 0) {
            return i;
        }
        depth += text[i] == '[' ? 1 : text[i] == ']' ? -1 : 0;
    }
    return text.size();
}

// The length of the first line: as many words as fit, but at least one.
std::size_t lineLength(std::string_view text, std::size_t width) {
    std::size_t length = wordLength(text);
    while (length < text.size()) {
        const std::string_view rest = trimLeft(text.substr(length));
        const std::size_t longer = text.size() - rest.size() + wordLength(rest);
        if (longer > width) {
            break;
        }
        length = longer;
    }
    return length;
}

} // namespace

std::vector<std::string_view> wrapText(std::string_view text, std::size_t width) {
    std::vector<std::string_view> lines;
    for (text = trimBlanks(text); !text.empty(); text = trimLeft(text)) {
        lines.push_back(text.substr(0, lineLength(text, width)));
        text.remove_prefix(lines.back().size());
    }
    return lines;
}

} // namespace keldrin
