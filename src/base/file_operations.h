#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace keldrin {

// The road of all data to and from the disk: what reads or writes a file of data asks these
// functions, so that a test can make any of the calls fail, end short or end the process.

/// The calls to the system. As in POSIX, a result below 0 is a failure with its code in errno.
struct FileOperations {
    std::function<int(const std::string &path, int flags, unsigned mode)> open;
    std::function<std::ptrdiff_t(int file, char *to, std::size_t size)> read;
    std::function<std::ptrdiff_t(int file, const char *from, std::size_t size)> write;
    std::function<int(int file)> sync; ///< flushes a file or a directory to the disk
    std::function<int(int file)> close;
    std::function<int(const std::string &from, const std::string &to)> rename;
    std::function<int(const std::string &from, const std::string &to)> link; ///< a second name
    std::function<int(const std::string &path)> remove;
};

/// The calls of this system.
FileOperations systemFileOperations();

/// The calls in use, one record a process. Only tests change it.
FileOperations &fileOperations();

/// An open file, closed with it.
class OpenFile {
  public:
    OpenFile() = default;
    explicit OpenFile(int file) : file_(file) {}
    OpenFile(OpenFile &&other) noexcept : file_(other.release()) {}
    OpenFile &operator=(OpenFile &&other) noexcept;
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;
    ~OpenFile() { close(); }

    [[nodiscard]] bool isOpen() const { return file_ >= 0; }
    [[nodiscard]] int number() const { return file_; }

    /// False when the system reports a failure; the file is closed all the same.
    bool close();

  private:
    int release();

    int file_ = -1;
};

/// Failure text for what the system has no words of its own for.
inline constexpr const char *NotAPlainFile = "is not a plain file";

/// Opens a plain file for reading. What is a directory, a device or a pipe is refused and never
/// waited for.
/// returns  a file that is not open on failure; `failure` then says why
OpenFile openForReading(const std::string &path, std::string &failure);

/// Reads at most `size` bytes. 0 at the end, below 0 on failure, with the code in errno.
std::ptrdiff_t readSome(const OpenFile &file, char *to, std::size_t size);

/// The first bytes of a plain file, at most `most`; blank when it cannot be read.
std::string fileHead(const std::string &path, std::size_t most);

/// Opens a file for appending and creates it if necessary. On failure the result is not open and
/// errno holds the code.
OpenFile openForAppending(const std::string &path);

/// Writes all of `content`. False on failure, with the code in errno.
[[nodiscard]] bool writeAll(const OpenFile &file, std::string_view content);

/// Reads a plain file whole. False when anything fails; `failure` then says why.
[[nodiscard]] bool readWholeFile(const std::string &path, std::string &content,
                                 std::string &failure);

} // namespace keldrin
