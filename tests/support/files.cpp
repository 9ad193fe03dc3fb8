#include "support/files.h"

#include <fstream>
#include <sstream>
#include <utility>

namespace keldrin {

std::string fileContent(const std::string &path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return std::move(content).str();
}

void putFile(const std::string &path, std::string_view content) {
    std::ofstream(path, std::ios::binary) << content;
}

} // namespace keldrin
