#include "toolkit/file_filter.h"

#include "base/ascii.h"
#include "base/paths.h"

namespace keldrin {

namespace {

// What stands before the mark; the text then begins after it.
std::string_view takeUntil(std::string_view &text, char mark) {
    const std::size_t end = text.find(mark);
    const std::string_view part = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
    return trimBlanks(part);
}

} // namespace

FileFilter parseFileFilter(std::string_view filter) {
    FileFilter parsed;
    parsed.description = takeUntil(filter, '|');
    std::string_view patterns = takeUntil(filter, '|');
    while (!patterns.empty()) {
        if (const std::string_view pattern = takeUntil(patterns, ';'); !pattern.empty()) {
            parsed.patterns.emplace_back(pattern);
        }
    }
    return parsed;
}

std::string withFilterExtension(std::string_view path, std::string_view filter) {
    std::string whole(path);
    if (fileNameOf(path).empty() || !extensionOf(path).empty()) {
        return whole;
    }
    const FileFilter parsed = parseFileFilter(filter);
    if (!parsed.patterns.empty()) {
        const std::string_view extension = extensionOf(parsed.patterns.front());
        whole.append(extension == ".*" ? "" : extension);
    }
    return whole;
}

} // namespace keldrin
