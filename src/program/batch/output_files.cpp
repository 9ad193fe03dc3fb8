#include "program/batch/output_files.h"

#include "base/denormals.h"
#include "base/paths.h"
#include "messages/message_sink.h"
#include "messages/questions.h"
#include "program/batch/command.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace keldrin {

namespace {

// Reported on stderr when it fails; a blank name needs none.
bool makeOutputDirectory(std::string_view program, const std::string &directory) {
    if (directory.empty()) {
        return true;
    }
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) {
        std::fprintf(stderr, "%s: cannot make %s: %s\n", std::string(program).c_str(),
                     directory.c_str(), error.message().c_str());
    }
    return !error;
}

// What is made of files[index] would have the name of what an earlier file gave: their names are
// the same, and all go into one `directory`, or that is blank and they lie together.
bool nameIsTaken(std::span<const std::string> files, std::size_t index,
                 const std::string &directory) {
    const auto nameOf = [&directory](const std::string &path) {
        return directory.empty() ? withoutExtension(path) : baseNameOf(path);
    };
    const std::span<const std::string> earlier = files.first(index);
    return std::any_of(earlier.begin(), earlier.end(), [&](const std::string &other) {
        return nameOf(other) == nameOf(files[index]);
    });
}

} // namespace

int runOverFiles(std::string_view program, AnsweringBackend &backend,
                 std::span<const std::string> files, const std::string &directory,
                 const FileTask &task) {
    if (!makeOutputDirectory(program, directory)) {
        return ExitFailed;
    }
    flushDenormals();
    // The log files and the counts of the log hold what is reported; no error ends the run.
    messageSink() = MessageSink{};
    messageSink().close = ToolkitClose;
    questions() = {}; // nobody is there to be asked
    ToolkitInit(backend, {std::string(program.substr(0, program.find(' ')))});
    bool good = true;
    for (std::size_t i = 0; i < files.size(); ++i) {
        good = task(files[i], nameIsTaken(files, i, directory)) && good;
    }
    ToolkitClose();
    return good ? ExitOk : ExitFailed;
}

} // namespace keldrin
