#pragma once

#include "messages/message_log.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace keldrin {

/// Long work that somebody may watch and stop, for the length of the object.
class WatchedWork {
  public:
    WatchedWork() = default;
    WatchedWork(const WatchedWork &) = delete;
    WatchedWork &operator=(const WatchedWork &) = delete;
    virtual ~WatchedWork() = default;

    /// Says how much is done, in a unit of the work's own; false once it shall stop.
    virtual bool step(double done, double total) = 0;
};

/// What shows the messages and the progress of the program: a window, a console, or nothing. A
/// program installs its own at the start, before anything is reported. A function that is not set
/// is not called; the files of the log are written all the same.
struct MessageSink {
    /// A line has been added to the log.
    std::function<void(std::string_view line)> logLine;
    /// A message has been added to those of this run.
    std::function<void(const ReportedMessage &message)> reported;
    /// The box of an error.
    /// mustBeSeen  it is shown even when the user wants no further messages
    /// returns     false when the user wants the program to end
    std::function<bool(std::span<const MessageLine> lines, bool mustBeSeen)> box;
    /// The newest notice, for a status bar.
    std::function<void(std::string_view text)> status;
    /// Begins long work, named in words and with a caption; null: nobody watches.
    std::function<std::unique_ptr<WatchedWork>(const std::string &words,
                                               const std::string &caption)>
        beginWork;
    /// Closes what is open at the end of the program; the result is its exit code.
    std::function<int()> close;
};

/// One per process.
MessageSink &messageSink();

} // namespace keldrin
