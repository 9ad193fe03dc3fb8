#include "messages/watched_reading.h"

#include "messages/message_log.h"

namespace keldrin {

WatchedReading::WatchedReading(LineReader &reader, std::string_view path)
    : reader_(reader), place_(reader, path) {
    if (messageSink().beginWork) {
        work_ = messageSink().beginWork(std::string(path), "Reading " + place_.file());
    }
    if (work_) {
        reader.watch([work = work_.get()](std::uintmax_t done, std::uintmax_t total) {
            return work->step(static_cast<double>(done), static_cast<double>(total));
        });
    }
}

WatchedReading::~WatchedReading() {
    stopped();
    reader_.watch({});
}

bool WatchedReading::stopped() {
    place_.settle();
    if (reader_.stopped() && !told_) {
        told_ = true;
        ReportInfoLine("Reading of " + place_.file() + " was stopped; nothing of it is used.");
    }
    return reader_.stopped();
}

} // namespace keldrin
