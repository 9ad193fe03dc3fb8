#include "base/safe_writer.h"

#include "base/paths.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

namespace keldrin {

namespace fs = std::filesystem;

namespace {

struct CloseFile {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

bool refuse(std::string &reason, int code) {
    reason = std::strerror(code);
    return false;
}

bool flushToDisk(std::FILE *file) {
    if (std::fflush(file) != 0) {
        return false;
    }
#ifdef _WIN32
    return true;
#else
    // A pipe or a device has no disk to be flushed to.
    return ::fsync(::fileno(file)) == 0 || errno == EINVAL || errno == EROFS;
#endif
}

bool writeAll(const std::string &path, std::string_view content, std::string &reason) {
    FileHandle file(std::fopen(path.c_str(), "wb"));
    if (!file) {
        return refuse(reason, errno);
    }
    const bool written = content.empty() || std::fwrite(content.data(), 1, content.size(),
                                                        file.get()) == content.size();
    if (!written || !flushToDisk(file.get())) {
        return refuse(reason, errno);
    }
    if (std::fclose(file.release()) != 0) {
        return refuse(reason, errno);
    }
    std::error_code error;
    if (fs::file_size(path, error) != content.size() || error) {
        reason = "the file written is not whole";
        return false;
    }
    return true;
}

// The file that a chain of symbolic links ends in.
std::string linkTarget(const std::string &path) {
    std::error_code error;
    if (!fs::is_symlink(path, error)) {
        return path;
    }
    const fs::path target = fs::weakly_canonical(path, error);
    return error ? path : target.string();
}

// Not made from the target's name, which may be as long as the file system allows.
std::string temporaryName(const std::string &target) {
#ifdef _WIN32
    const int process = _getpid();
#else
    const int process = ::getpid();
#endif
    for (int attempt = 0;; ++attempt) {
        std::string name =
            joinPath(directoryOf(target), ".keldrin-" + std::to_string(process) + "-" +
                                              std::to_string(attempt) + ".part");
        if (!pathExists(name)) {
            return name;
        }
    }
}

bool mayReplace(const std::string &target) {
#ifdef _WIN32
    return true;
#else
    return ::access(target.c_str(), W_OK) == 0;
#endif
}

} // namespace

bool writeWholeFile(const std::string &path, std::string_view content, std::string &reason) {
    const std::string target = linkTarget(path);
    std::error_code error;
    if (fs::is_directory(target, error)) {
        return refuse(reason, EISDIR);
    }
    const bool replaces = fs::exists(target, error);
    if (replaces && !mayReplace(target)) {
        return refuse(reason, errno);
    }
    const std::string temporary = temporaryName(target);
    if (!writeAll(temporary, content, reason)) {
        fs::remove(temporary, error);
        return false;
    }
    if (replaces) {
        fs::permissions(temporary, fs::status(target, error).permissions(), error);
    }
    fs::rename(temporary, target, error);
    if (error) {
        reason = error.message();
        std::error_code ignored;
        fs::remove(temporary, ignored);
        return false;
    }
    return true;
}

bool appendToFile(const std::string &path, std::string_view content) {
    FileHandle file(std::fopen(path.c_str(), "ab"));
    if (!file) {
        return false;
    }
    const bool written =
        std::fwrite(content.data(), 1, content.size(), file.get()) == content.size();
    return std::fclose(file.release()) == 0 && written;
}

} // namespace keldrin
