#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

namespace keldrin::fuzz {

/// Ends the process, which the fuzzer records, unless a statement holds.
inline void require(bool truth) {
    if (!truth) {
        std::abort();
    }
}

/// A directory of this process alone, below the temporary one; gone with the process.
class ScratchDirectory {
  public:
    ScratchDirectory() {
#ifdef _WIN32
        const int process = _getpid();
#else
        const int process = ::getpid();
#endif
        path_ =
            std::filesystem::temp_directory_path() / ("keldrin_fuzz_" + std::to_string(process));
        std::filesystem::create_directories(path_);
    }
    ScratchDirectory(const ScratchDirectory &) = delete;
    ScratchDirectory &operator=(const ScratchDirectory &) = delete;
    ~ScratchDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    [[nodiscard]] const std::filesystem::path &path() const {
        return path_;
    }

  private:
    std::filesystem::path path_;
};

/// A path in the scratch directory: the program looks through the directory of a project.
inline std::string scratchPath(std::string_view extension) {
    static const ScratchDirectory directory;
    return (directory.path() / ("case" + std::string(extension))).string();
}

/// Removes what earlier inputs have left there, kept copies too.
inline void clearScratch() {
    std::error_code ignored;
    const auto directory = std::filesystem::path(scratchPath("")).parent_path();
    for (const auto &entry : std::filesystem::directory_iterator(directory, ignored)) {
        std::filesystem::remove(entry.path(), ignored);
    }
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
