#include "scratch_file.h"

#include "base/clock.h"
#include "base/safe_writer.h"
#include "messages/message_log.h"
#include "projectfile/project_file.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

// Any bytes as a project file: they are read and written, and what the program has written itself
// must come out of reading and writing again byte by byte.

namespace {

using namespace keldrin;
using namespace keldrin::fuzz;

bool holdsQuote(std::string_view text) {
    return text.find_first_of("'\"") != std::string_view::npos;
}

/// Texts are written as they stand, so one with quotes may come back changed.
bool hasQuotedText(const ControlValues &control) {
    bool any = false;
    for (const FixedText<128> &line : control.Header) {
        any = any || holdsQuote(line.view());
    }
    for (const auto &text : {control.JobName, control.JobArea, control.JobBy, control.JobFor}) {
        any = any || holdsQuote(text.view());
    }
    for (const auto &text : {control.JobNumber, control.JobDate, control.LineName}) {
        any = any || holdsQuote(text.view());
    }
    return any;
}

/// Reads what was written and writes it again; empty when there is nothing left to read.
std::string rewritten(SurveyModel &model, std::string &path) {
    if (STD_File_Read(model, path) != 0) {
        return {};
    }
    static_cast<void>(STD_File_Write(model, path));
    return load(path);
}

void requireFixedPoint(SurveyModel &model, std::string &path) {
    static_cast<void>(STD_File_Write(model, path));
    // The first pass may still lose what the format cannot hold: numbers too long for their
    // columns, blank first headers, stations that rounding brings together.
    const std::string second = rewritten(model, path);
    const int soundings = model.SoundingCount;
    if (second.empty() || hasQuotedText(model.control) || second.find('*') != std::string::npos) {
        return;
    }
    const std::string third = rewritten(model, path);
    if (model.SoundingCount == soundings && second != third) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    SurveyModel model; // a new one, since a table that has grown is reset whole each time
    clearScratch();
    std::string path = scratchPath(".std");
    fixClock(DateTime{2021, 5, 14, 9, 30, 0});
    messageLog().quiet = true;
    store(path, {reinterpret_cast<const char *>(data), size});
    if (STD_File_Read(model, path) == 0) {
        requireFixedPoint(model, path);
    } else {
        static_cast<void>(STD_File_Write(model, path));
    }
    return 0;
}
