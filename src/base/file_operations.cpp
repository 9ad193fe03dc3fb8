#include "base/file_operations.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <utility>

#include <sys/stat.h>
#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace keldrin {

namespace fs = std::filesystem;

namespace {

int asResult(const std::error_code &error) {
    if (error) {
        errno = error.default_error_condition().value();
    }
    return error ? -1 : 0;
}

int renameFile(const std::string &from, const std::string &to) {
    std::error_code error;
    fs::rename(from, to, error);
    return asResult(error);
}

int linkFile(const std::string &from, const std::string &to) {
    std::error_code error;
    fs::create_hard_link(from, to, error);
    return asResult(error);
}

int removeFile(const std::string &path) {
    std::error_code error;
    fs::remove(path, error);
    return asResult(error);
}

#ifdef _WIN32
constexpr int ReadingFlags = _O_RDONLY | _O_BINARY;
constexpr int AppendingFlags = _O_WRONLY | _O_CREAT | _O_APPEND | _O_BINARY;

int openFile(const std::string &path, int flags, unsigned mode) {
    return ::_open(path.c_str(), flags, static_cast<int>(mode));
}
std::ptrdiff_t readFile(int file, char *to, std::size_t size) {
    return ::_read(file, to, static_cast<unsigned>(std::min<std::size_t>(size, 1U << 30)));
}
std::ptrdiff_t writeFile(int file, const char *from, std::size_t size) {
    return ::_write(file, from, static_cast<unsigned>(std::min<std::size_t>(size, 1U << 30)));
}
int syncFile(int file) {
    return ::_commit(file);
}
int closeFile(int file) {
    return ::_close(file);
}
#else
// Without waiting, so that a pipe without a writer is refused at once.
constexpr int ReadingFlags = O_RDONLY | O_NONBLOCK | O_CLOEXEC;
constexpr int AppendingFlags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC;

int openFile(const std::string &path, int flags, unsigned mode) {
    return ::open(path.c_str(), flags, static_cast<mode_t>(mode));
}
std::ptrdiff_t readFile(int file, char *to, std::size_t size) {
    return ::read(file, to, size);
}
std::ptrdiff_t writeFile(int file, const char *from, std::size_t size) {
    return ::write(file, from, size);
}
int syncFile(int file) {
    return ::fsync(file);
}
int closeFile(int file) {
    return ::close(file);
}
#endif

bool isPlain(const OpenFile &file) {
    struct stat state {};
    return ::fstat(file.number(), &state) == 0 && (state.st_mode & S_IFMT) == S_IFREG;
}

} // namespace

FileOperations systemFileOperations() {
    return {openFile, readFile, writeFile, syncFile, closeFile, renameFile, linkFile, removeFile};
}

FileOperations &fileOperations() {
    static FileOperations operations = systemFileOperations();
    return operations;
}

OpenFile &OpenFile::operator=(OpenFile &&other) noexcept {
    if (this != &other) {
        close();
        file_ = other.release();
    }
    return *this;
}

int OpenFile::release() {
    return std::exchange(file_, -1);
}

bool OpenFile::close() {
    return !isOpen() || fileOperations().close(release()) == 0;
}

OpenFile openForReading(const std::string &path, std::string &failure) {
    // A device may act on being opened.
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    if (type == fs::file_type::directory) {
        failure = "is a directory";
        return {};
    }
    if (fs::exists(fs::file_status(type)) && type != fs::file_type::regular) {
        failure = NotAPlainFile;
        return {};
    }
    OpenFile file(fileOperations().open(path, ReadingFlags, 0));
    if (!file.isOpen()) {
        failure = std::strerror(errno);
    } else if (!isPlain(file)) {
        failure = NotAPlainFile;
        file.close();
    }
    return file;
}

std::ptrdiff_t readSome(const OpenFile &file, char *to, std::size_t size) {
    std::ptrdiff_t got = 0;
    do {
        got = fileOperations().read(file.number(), to, size);
    } while (got < 0 && errno == EINTR);
    return got;
}

std::string fileHead(const std::string &path, std::size_t most) {
    std::string failure;
    const OpenFile file = openForReading(path, failure);
    std::string head(most, '\0');
    std::size_t size = 0;
    for (std::ptrdiff_t got = 1; file.isOpen() && got > 0 && size < most;) {
        got = readSome(file, head.data() + size, most - size);
        size += static_cast<std::size_t>(std::max<std::ptrdiff_t>(got, 0));
    }
    head.resize(size);
    return head;
}

OpenFile openForAppending(const std::string &path) {
    constexpr unsigned newFileMode = 0666; // less what the user's mask takes away
    return OpenFile(fileOperations().open(path, AppendingFlags, newFileMode));
}

bool writeAll(const OpenFile &file, std::string_view content) {
    while (!content.empty()) {
        const std::ptrdiff_t written =
            fileOperations().write(file.number(), content.data(), content.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            errno = written == 0 ? ENOSPC : errno;
            return false;
        }
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool readWholeFile(const std::string &path, std::string &content, std::string &failure) {
    content.clear();
    const OpenFile file = openForReading(path, failure);
    if (!file.isOpen()) {
        return false;
    }
    constexpr std::size_t piece = std::size_t{256} * 1024;
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    content.reserve(error ? piece : static_cast<std::size_t>(size) + piece);
    for (;;) {
        const std::size_t before = content.size();
        content.resize(before + piece);
        const std::ptrdiff_t got = readSome(file, content.data() + before, piece);
        content.resize(before + static_cast<std::size_t>(got > 0 ? got : 0));
        if (got < 0) {
            failure = std::strerror(errno);
            return false;
        }
        if (got == 0) {
            return true;
        }
    }
}

} // namespace keldrin
