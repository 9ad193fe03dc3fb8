#include "program/batch/option_words.h"

#include <cstddef>

namespace keldrin {

std::vector<std::string_view> listWords(std::string_view list) {
    std::vector<std::string_view> words;
    for (;;) {
        const std::size_t end = list.find(',');
        words.push_back(list.substr(0, end));
        if (end == std::string_view::npos) {
            return words;
        }
        list.remove_prefix(end + 1);
    }
}

std::string inWords(std::span<const std::string_view> names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool last = i + 1 == names.size();
        text.append(i == 0 ? "" : last ? " and " : ", ").append(names[i]);
    }
    return text;
}

} // namespace keldrin
