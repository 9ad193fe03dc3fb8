#pragma once

#include "base/line_reader.h"
#include "toolkit/long_work.h"

#include <string>
#include <string_view>

namespace keldrin {

/// The reading of one file, which the user watches and may stop. What was read of a file that was
/// stopped must not be taken for the file.
class WatchedReading {
  public:
    /// Watches a reader that has just been opened.
    WatchedReading(LineReader &reader, std::string_view path);
    WatchedReading(const WatchedReading &) = delete;
    WatchedReading &operator=(const WatchedReading &) = delete;
    ~WatchedReading() { stopped(); }

    /// True when the user has stopped the reading, which is logged once. To be asked before what
    /// was read is judged.
    bool stopped();

  private:
    LineReader &reader_;
    std::string name_;
    LongWork work_;
    bool told_ = false;
};

} // namespace keldrin
