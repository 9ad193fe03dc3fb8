#pragma once

#include "base/line_reader.h"
#include "messages/message_log.h"

#include <span>
#include <string>
#include <string_view>

namespace keldrin {

// What is being read while a message is reported. It gives the list of messages its columns, and
// it keeps a file with many faulty rows from showing a box for each of them: the first two boxes of
// a command are shown as they come, the others become one box when the file has been read. A row
// that both passes over a file complain of counts once. All of them are written and listed.

/// A file is read, for the length of the object.
class ReadingPlace {
  public:
    ReadingPlace(const LineReader &reader, std::string_view path);
    ReadingPlace(const ReadingPlace &) = delete;
    ReadingPlace &operator=(const ReadingPlace &) = delete;
    ~ReadingPlace();

    [[nodiscard]] const std::string &file() const { return file_; } ///< its name
    /// The line that was read last; 0 before the first and after the last one.
    [[nodiscard]] int row() const;

    /// Shows the box for those that were held back. To be asked before what was read is judged.
    void settle();

  private:
    const LineReader &reader_;
    std::string file_;
};

/// True when the box of an error waits for the end of the file, because it is about a row and two
/// such boxes have been shown.
bool holdsRowBox(std::span<const MessageLine> lines);

} // namespace keldrin
