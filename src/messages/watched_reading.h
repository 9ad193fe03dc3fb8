#pragma once

#include "base/line_reader.h"
#include "messages/message_sink.h"
#include "messages/reading_place.h"

#include <memory>
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
    ~WatchedReading();

    /// True when the user has stopped the reading, which is logged once. To be asked before what
    /// was read is judged.
    bool stopped();

  private:
    LineReader &reader_;
    ReadingPlace place_;
    std::unique_ptr<WatchedWork> work_; ///< null when nobody watches
    bool told_ = false;
};

} // namespace keldrin
