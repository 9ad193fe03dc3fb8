#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

/// A chooser's filter taken apart: "Choose KELDRIN file|*.std|".
struct FileFilter {
    std::string description;
    std::vector<std::string> patterns; ///< "*.std", "*.avg" ...
};

/// Takes apart a description, a bar, patterns separated by semicolons, and a closing bar. Blanks
/// around each part do not count; a missing bar closes at the end of the text.
FileFilter parseFileFilter(std::string_view filter);

/// The path that a save chooser stands for: a name without extension gets that of the first
/// pattern. A blank path stays blank.
std::string withFilterExtension(std::string_view path, std::string_view filter);

} // namespace keldrin
