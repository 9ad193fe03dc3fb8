#include "batch/output_files.h"

#include "base/paths.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace keldrin {

bool makeOutputDirectory(std::string_view command, const std::string &directory) {
    if (directory.empty()) {
        return true;
    }
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) {
        std::fprintf(stderr, "keldrin-batch %s: cannot make %s: %s\n", std::string(command).c_str(),
                     directory.c_str(), error.message().c_str());
    }
    return !error;
}

bool nameIsTaken(std::span<const std::string> files, std::size_t index,
                 const std::string &directory) {
    const auto nameOf = [&directory](const std::string &path) {
        return directory.empty() ? withoutExtension(path) : baseNameOf(path);
    };
    const std::span<const std::string> earlier = files.first(index);
    return std::any_of(earlier.begin(), earlier.end(), [&](const std::string &other) {
        return nameOf(other) == nameOf(files[index]);
    });
}

} // namespace keldrin
