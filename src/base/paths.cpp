#include "base/paths.h"

#include "base/ascii.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace keldrin {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view Separators = "/\\";

std::size_t nameStart(std::string_view path) {
    const std::size_t last = path.find_last_of(Separators);
    return last == std::string_view::npos ? 0 : last + 1;
}

std::size_t extensionStart(std::string_view path) {
    const std::size_t start = nameStart(path);
    const std::size_t point = path.rfind('.');
    return point == std::string_view::npos || point <= start ? path.size() : point;
}

// Elements that name no directory of their own mean the working directory, where anybody may have
// put anything.
std::vector<std::string> searchedDirectories(std::string_view searchPath) {
#ifdef _WIN32
    constexpr char listSeparator = ';';
#else
    constexpr char listSeparator = ':';
#endif
    std::vector<std::string> directories;
    std::size_t start = 0;
    while (start <= searchPath.size()) {
        const std::size_t end = std::min(searchPath.find(listSeparator, start), searchPath.size());
        const std::string_view element = searchPath.substr(start, end - start);
        if (fs::path(element).is_absolute()) {
            directories.emplace_back(element);
        }
        start = end + 1;
    }
    return directories;
}

bool isExecutable(const std::string &path) {
    constexpr fs::perms executable =
        fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    return !error && fs::is_regular_file(status) &&
           (status.permissions() & executable) != fs::perms::none;
}

} // namespace

std::string_view directoryOf(std::string_view path) {
    return path.substr(0, nameStart(path));
}

std::string_view fileNameOf(std::string_view path) {
    return path.substr(nameStart(path));
}

std::string_view extensionOf(std::string_view path) {
    return path.substr(extensionStart(path));
}

std::string_view withoutExtension(std::string_view path) {
    return path.substr(0, extensionStart(path));
}

std::string_view baseNameOf(std::string_view path) {
    return fileNameOf(withoutExtension(path));
}

bool isProjectPath(std::string_view path) {
    return sameIgnoringCase(extensionOf(path), ".std");
}

char separatorOf(std::string_view path) {
    const std::size_t last = path.find_last_of(Separators);
    return last == std::string_view::npos ? static_cast<char>(fs::path::preferred_separator)
                                          : path[last];
}

std::string joinPath(std::string_view directory, std::string_view name) {
    std::string path(directory);
    if (!path.empty() && Separators.find(path.back()) == std::string_view::npos) {
        path += separatorOf(directory);
    }
    path += name;
    return path;
}

bool pathExists(const std::string &path) {
    std::error_code error;
    return fs::exists(fs::path(path), error);
}

bool isRegularFile(const std::string &path) {
    std::error_code error;
    return fs::is_regular_file(fs::path(path), error);
}

std::string existingForm(const std::string &path) {
    if (path.find('\\') == std::string::npos || pathExists(path)) {
        return path;
    }
    std::string forward = path;
    std::replace(forward.begin(), forward.end(), '\\', '/');
    return pathExists(forward) ? forward : path;
}

std::string sideFilePath(std::string_view path, std::string_view extension) {
    std::string exact = std::string(withoutExtension(path)) + std::string(extension);
    if (pathExists(exact)) {
        return exact;
    }
    const std::string directory(directoryOf(exact));
    const std::string wanted(fileNameOf(exact));
    std::string found;
    std::error_code error;
    for (fs::directory_iterator entry(directory.empty() ? "." : directory, error), end;
         !error && entry != end; entry.increment(error)) {
        std::string name = entry->path().filename().string();
        if (sameIgnoringCase(name, wanted) && (found.empty() || name < found)) {
            found = std::move(name);
        }
    }
    return found.empty() ? exact : directory + found;
}

std::string workingDirectory() {
    std::error_code error;
    return fs::current_path(error).string();
}

std::string executableDirectory() {
    std::error_code error;
    const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? "" : own.parent_path().string();
}

std::optional<std::string> findProgram(std::string_view name, std::string_view searchPath,
                                       std::string_view programDirectory) {
#ifdef _WIN32
    const std::string file = std::string(name) + ".exe";
#else
    const std::string file(name);
#endif
    std::vector<std::string> places = searchedDirectories(searchPath);
    if (!programDirectory.empty()) {
        places.emplace_back(programDirectory);
    }
    for (const std::string &directory : places) {
        std::string candidate = joinPath(directory, file);
        if (isExecutable(candidate)) {
            return candidate;
        }
    }
    return std::nullopt;
}

} // namespace keldrin
