#pragma once

#include <string>
#include <string_view>

namespace keldrin {

/// Empty when the file cannot be read.
std::string fileContent(const std::string &path);

void putFile(const std::string &path, std::string_view content);

} // namespace keldrin
