#include "messages/watched_reading.h"

#include "base/paths.h"
#include "messages/message_log.h"

namespace keldrin {

WatchedReading::WatchedReading(LineReader &reader, std::string_view path)
    : reader_(reader), name_(fileNameOf(path)), work_({std::string(path), "Reading " + name_}) {
    watchReading(reader);
}

bool WatchedReading::stopped() {
    if (reader_.stopped() && !told_) {
        told_ = true;
        ReportInfoLine("Reading of " + name_ + " was stopped; nothing of it is used.");
    }
    return reader_.stopped();
}

} // namespace keldrin
