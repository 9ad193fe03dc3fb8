#pragma once

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace keldrin {

inline std::string fileContent(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void putFile(const std::string &path, std::string_view content) {
    std::ofstream(path, std::ios::binary) << content;
}

} // namespace keldrin
