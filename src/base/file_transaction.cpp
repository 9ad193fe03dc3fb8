#include "base/file_transaction.h"

#include "base/file_operations.h"
#include "base/paths.h"
#include "base/temporary_names.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <utility>

#include <sys/stat.h>
#ifndef _WIN32
#include <unistd.h>
#endif

namespace keldrin {

namespace fs = std::filesystem;

namespace {

#ifdef _WIN32
constexpr int CreateFlags = _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY;
#else
constexpr int CreateFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
#endif
constexpr unsigned NewFileMode = 0666; ///< less what the user's mask takes away

bool isThere(const std::string &path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

bool mayReplace(const std::string &target) {
#ifdef _WIN32
    return true;
#else
    return ::access(target.c_str(), W_OK) == 0;
#endif
}

void setMode(const OpenFile &file, unsigned mode) {
#ifndef _WIN32
    if (mode != NewFileMode) {
        // A file system without permissions refuses, and has none to be kept.
        static_cast<void>(::fchmod(file.number(), static_cast<mode_t>(mode)));
    }
#endif
}

bool flushDirectory(const std::string &directory) {
#ifdef _WIN32
    return true;
#else
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
    OpenFile file(fileOperations().open(directory.empty() ? "." : directory, flags, 0));
    if (!file.isOpen()) {
        return errno == EACCES; // may be entered and not be read: nothing can be flushed
    }
    // Some file systems know no flush of a directory.
    const bool flushed = fileOperations().sync(file.number()) == 0 || errno == EINVAL ||
                         errno == EROFS || errno == ENOTSUP;
    const int code = errno;
    const bool closed = file.close();
    errno = flushed ? errno : code;
    return flushed && closed;
#endif
}

} // namespace

std::string linkTarget(const std::string &path) {
    constexpr int mostLinks = 40;
    std::string target = path;
    std::error_code error;
    for (int i = 0; i < mostLinks && fs::is_symlink(target, error); ++i) {
        const std::string next = fs::read_symlink(target, error).string();
        if (error) {
            break;
        }
        target = fs::path(next).is_absolute() ? next : joinPath(directoryOf(target), next);
    }
    return target;
}

FileTransaction::~FileTransaction() {
    takeBack();
}

bool FileTransaction::fail(std::string why) {
    failure_ = std::move(why);
    return false;
}

bool FileTransaction::failWithCode() {
    return fail(std::strerror(errno));
}

bool FileTransaction::writeTemporary(const std::string &name, std::string_view content,
                                     unsigned mode) {
    OpenFile file(fileOperations().open(name, CreateFlags, mode));
    if (!file.isOpen()) {
        return failWithCode();
    }
    temporaries_.push_back(name);
    setMode(file, mode);
    if (!writeAll(file, content) || fileOperations().sync(file.number()) != 0) {
        return failWithCode();
    }
    if (!file.close()) {
        return failWithCode();
    }
    std::error_code error;
    if (fs::file_size(name, error) != content.size() || error) {
        return fail("the file written is not whole");
    }
    return true;
}

bool FileTransaction::stage(const std::string &path, std::string_view content) {
    const Staged staged{linkTarget(path), newName(linkTarget(path))};
    std::error_code error;
    const fs::file_status status = fs::symlink_status(staged.target, error);
    unsigned mode = NewFileMode;
    if (fs::is_directory(status)) {
        return fail(std::strerror(EISDIR));
    }
    if (fs::exists(status)) {
        if (!fs::is_regular_file(status)) {
            return fail(NotAPlainFile);
        }
        if (!mayReplace(staged.target)) {
            return failWithCode();
        }
        mode = static_cast<unsigned>(status.permissions() & fs::perms::mask);
    }
    removeLeftOvers(std::string(directoryOf(staged.target)));
    staged_.push_back(staged);
    return writeTemporary(staged.temporary, content, mode);
}

std::string FileTransaction::newName(const std::string &beside) {
    return temporaryName(std::string(directoryOf(beside)));
}

// The same file under another name or, where the file system knows no such thing, a copy.
bool FileTransaction::secondName(const std::string &path, std::string &name) {
    name = newName(path);
    if (fileOperations().link(path, name) == 0) {
        temporaries_.push_back(name);
        return true;
    }
    std::string content;
    std::error_code error;
    const fs::perms mode = fs::status(path, error).permissions() & fs::perms::mask;
    return readWholeFile(path, content, failure_) &&
           writeTemporary(name, content, static_cast<unsigned>(mode));
}

bool FileTransaction::noteStep(const std::string &path) {
    Step step{path, ""};
    if (isThere(path) && !secondName(path, step.before)) {
        return false;
    }
    steps_.push_back(step);
    std::string directory(directoryOf(path));
    if (std::find(directories_.begin(), directories_.end(), directory) == directories_.end()) {
        directories_.push_back(std::move(directory));
    }
    return true;
}

bool FileTransaction::putInPlace(const std::string &path) {
    const std::string target = linkTarget(path);
    const auto staged = std::find_if(staged_.begin(), staged_.end(),
                                     [&](const Staged &s) { return s.target == target; });
    if (staged == staged_.end()) {
        return fail("nothing was written for it");
    }
    if (!noteStep(target)) {
        return false;
    }
    return fileOperations().rename(staged->temporary, target) == 0 || failWithCode();
}

bool FileTransaction::keepAs(const std::string &path, const std::string &name) {
    std::string second;
    if (!secondName(linkTarget(path), second) || !noteStep(name)) {
        return false;
    }
    return fileOperations().rename(second, name) == 0 || failWithCode();
}

bool FileTransaction::takeAway(const std::string &path) {
    const std::string target = linkTarget(path);
    return noteStep(target) && (fileOperations().remove(target) == 0 || failWithCode());
}

bool FileTransaction::flushDirectories() {
    return std::all_of(directories_.begin(), directories_.end(), flushDirectory);
}

// Those that have been renamed are gone, unless both names were the same file's.
void FileTransaction::removeTemporaries() {
    for (const std::string &name : temporaries_) {
        fileOperations().remove(name);
    }
    temporaries_.clear();
    steps_.clear();
    staged_.clear();
    directories_.clear();
}

bool FileTransaction::commit() {
    if (!flushDirectories()) {
        failWithCode();
        takeBack();
        return false;
    }
    removeTemporaries();
    return true;
}

void FileTransaction::takeBackStep(const Step &step) {
    if (step.before.empty()) {
        fileOperations().remove(step.path);
    } else if (fileOperations().rename(step.before, step.path) != 0) {
        saveUnderFreeName(step);
    }
}

void FileTransaction::saveUnderFreeName(const Step &step) {
    std::string place = step.path + "~";
    for (int n = 2; isThere(place); ++n) {
        place = step.path + "~" + std::to_string(n) + "~";
    }
    if (fileOperations().rename(step.before, place) != 0) {
        place = step.before;
        std::erase(temporaries_, place);
    }
    failure_ += "; the old file could not be put back and is now " + place;
}

void FileTransaction::takeBack() {
    if (steps_.empty() && temporaries_.empty()) {
        return;
    }
    for (auto step = steps_.rbegin(); step != steps_.rend(); ++step) {
        takeBackStep(*step);
    }
    flushDirectories();
    removeTemporaries();
}

} // namespace keldrin
