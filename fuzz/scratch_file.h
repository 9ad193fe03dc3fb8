#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

namespace keldrin::fuzz {

/// A path of this process alone in the temporary directory.
inline std::string scratchPath(std::string_view extension) {
#ifdef _WIN32
    const int process = _getpid();
#else
    const int process = ::getpid();
#endif
    const std::string name = "keldrin_fuzz_" + std::to_string(process) + std::string(extension);
    return (std::filesystem::temp_directory_path() / name).string();
}

inline void store(const std::string &path, std::string_view content) {
    std::ofstream(path, std::ios::binary)
        .write(content.data(), static_cast<std::streamsize>(content.size()));
}

inline std::string load(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace keldrin::fuzz
