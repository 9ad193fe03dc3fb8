#include "program/batch/run_names.h"

#include "base/ascii.h"
#include "base/file_operations.h"
#include "base/paths.h"
#include "projectfile/replace_files.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace keldrin {

namespace {

std::string keyOf(const std::string &path) {
    std::error_code error;
    std::string key = std::filesystem::absolute(path, error).lexically_normal().string();
    for (char &c : key) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return key;
}

/// True for a log or error file that this program has begun with its own name.
bool isOwn(const std::string &path) {
    constexpr std::string_view heading = "keldrin v";
    std::string content;
    std::string failure;
    return readWholeFile(path, content, failure) &&
           (content.empty() || trimBlanks(content).substr(0, heading.size()) == heading);
}

} // namespace

std::string MadeProjects::freeBase(const std::string &directory, const std::string &base) const {
    std::string free = base;
    for (int n = 2; made_.count(keyOf(joinPath(directory, free + ".std"))) > 0; ++n) {
        free = base + "_" + std::to_string(n);
    }
    return free;
}

void MadeProjects::add(const std::string &project) {
    made_.insert(keyOf(project));
}

std::string nameMessageFile(const std::string &from, const std::string &to, std::string &failure) {
    failure.clear();
    const bool written = pathExists(from);
    const bool own = !pathExists(to) || isOwn(to);
    std::string kept;
    if (!written) {
        if (own && pathExists(to)) {
            fileOperations().remove(to); // of an earlier run
        }
        return kept;
    }
    if (!own) {
        kept = keptName(to, 0, nullptr);
        if (fileOperations().rename(to, kept) != 0) {
            failure = std::strerror(errno);
            fileOperations().remove(from);
            return {};
        }
    }
    if (fileOperations().rename(from, to) != 0) {
        failure = std::strerror(errno);
        fileOperations().remove(from);
        if (!kept.empty() && fileOperations().rename(kept, to) == 0) {
            kept.clear();
        }
    }
    return kept;
}

} // namespace keldrin
