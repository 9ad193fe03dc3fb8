#pragma once

#include "base/file_operations.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace keldrin {

/// What LineReader::next() found.
enum class LineStatus {
    Line,  ///< a line
    End,   ///< end of the text
    Fault, ///< the system refused to read; the next call gives End
};

/// Reads a text file line by line, in one pass, with memory for one buffer and no more.
///
/// Lines end in LF or CRLF; the last one may lack its end. A UTF-8 byte order mark at the start is
/// passed over. The text stops at a byte 0x1A. A line longer than `limit` bytes is cut to it, at
/// the start of a character; the rest of that line is skipped.
class LineReader {
  public:
    static constexpr std::size_t DefaultBuffer = std::size_t{256} * 1024;

    /// limit: bytes of a line that are kept
    explicit LineReader(std::size_t limit, std::size_t bufferSize = DefaultBuffer);

    /// Opens a file. False when it does not exist, may not be read or is no plain file (a
    /// directory, a pipe, a device); errorText() then says why.
    [[nodiscard]] bool open(const std::string &path);

    /// Asked whenever the reader has taken another piece of its file from the disk, or of its text:
    /// bytes so far and bytes in all, 0 where the system does not say. False stops the reading, see
    /// stopped().
    using Watch = std::function<bool(std::uintmax_t done, std::uintmax_t total)>;
    void watch(Watch watch) { watch_ = std::move(watch); }

    /// Reads from memory in place of a file. The text must outlive the reader.
    void openText(std::string_view text);

    /// Gives the next line without its end; the view stands until the next call.
    LineStatus next(std::string_view &line);

    /// Number of the line that was given last, from 1.
    [[nodiscard]] int lineNumber() const { return lineNumber_; }

    /// True once next() has found the end of the text.
    [[nodiscard]] bool ended() const { return ended_; }

    /// True when a 0x1A ended the text with more than blanks and line ends after it.
    [[nodiscard]] bool endedAtMark() const { return endedAtMark_; }

    /// True once the text has ended in a line without a line end: that line may be cut. In front of
    /// a 0x1A blanks are no line.
    [[nodiscard]] bool endedInLine() const { return endedInLine_; }

    /// Number of the first line that was longer than the limit and so was cut; 0 none yet.
    [[nodiscard]] int firstCutLine() const { return firstCutLine_; }

    /// True once the system has refused to read on: the text is not whole.
    [[nodiscard]] bool failed() const { return failed_; }

    /// True once the watch has stopped the reading: what was not yet given never will be, and
    /// next() gives End.
    [[nodiscard]] bool stopped() const { return stopped_; }

    [[nodiscard]] const std::string &errorText() const { return errorText_; }

  private:
    bool refill();
    void askWatch();
    void watchText();
    void stop();
    void passOverByteOrderMark();
    void stopAtMark(std::size_t markPosition);
    bool anyDataLeft();
    bool takeLine(std::string_view &line);

    std::size_t limit_;
    OpenFile file_;
    Watch watch_;
    std::uintmax_t bytesRead_ = 0; ///< as reported to the watch
    std::uintmax_t fileSize_ = 0;  ///< 0 unknown
    std::size_t textSize_ = 0;     ///< of a text in memory
    std::vector<char> buffer_;
    std::string_view pending_; ///< read and not yet given
    std::string cut_;          ///< head of a line that does not fit the buffer
    bool inLongLine_ = false;
    bool sourceEnded_ = false;
    bool fault_ = false;
    bool stopped_ = false;
    bool ended_ = false;
    bool endedAtMark_ = false;
    bool endedInLine_ = false;
    int firstCutLine_ = 0;
    bool failed_ = false;
    int lineNumber_ = 0;
    std::string errorText_;
};

} // namespace keldrin
