#include "base/denormals.h"
#include "base/real.h"
#include "engine/invert_project.h"
#include "program/rkeldrin/engine_help.h"

#include <atomic>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

constexpr int MostThreads = 256;

std::atomic<bool> stopRequested = false;

void requestStop(int /*signal*/) {
    stopRequested.store(true, std::memory_order_relaxed);
}

void watchSignals() {
    std::signal(SIGTERM, requestStop);
    std::signal(SIGINT, requestStop);
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN); // whoever listened may go; the files are still wanted
#endif
}

/// Lines of progress on standard output, each one flushed.
class Console {
  public:
    explicit Console(bool quiet) : quiet_(quiet) {}

    void say(std::string_view line) {
        if (!quiet_) {
            std::fprintf(stdout, "rkeldrin: %.*s\n", static_cast<int>(line.size()), line.data());
            std::fflush(stdout);
        }
        last_ = Clock::now();
    }

    /// At most once a second, and not while other lines come.
    void progress(int done, int total) {
        if (done < total && Clock::now() - last_ >= std::chrono::seconds(1)) {
            say("soundings " + std::to_string(done) + " of " + std::to_string(total));
        }
    }

    static void fail(std::string_view line) {
        std::fprintf(stderr, "rkeldrin: %.*s\n", static_cast<int>(line.size()), line.data());
    }

  private:
    using Clock = std::chrono::steady_clock;

    bool quiet_;
    Clock::time_point last_ = Clock::now();
};

struct CommandLine {
    keldrin::InvertOptions options;
    int threads =
        keldrin::limited(static_cast<int>(std::thread::hardware_concurrency()), 1, MostThreads);
    bool quiet = false;
    std::string project;
};

bool readThreads(std::string_view word, int &threads) {
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), threads);
    return error == std::errc{} && end == word.data() + word.size() && threads >= 1 &&
           threads <= MostThreads;
}

/// Blank when the words can be used, else what is wrong with them.
std::string readWords(const std::vector<std::string_view> &words, CommandLine &line) {
    bool optionsEnded = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i];
        if (optionsEnded || word.empty() || word.front() != '-') {
            if (!line.project.empty()) {
                return "one project at a time; " + std::string(word) + " is too many";
            }
            line.project = word;
        } else if (word == "--") {
            optionsEnded = true;
        } else if (word == "--forward") {
            line.options.forward = true;
        } else if (word == "--fresh") {
            line.options.fresh = true;
        } else if (word == "--quiet") {
            line.quiet = true;
        } else if (word == "--threads") {
            if (++i == words.size() || !readThreads(words[i], line.threads)) {
                return "--threads takes a number from 1 to " + std::to_string(MostThreads);
            }
        } else {
            return "unknown option " + std::string(word);
        }
    }
    return line.project.empty() ? "no project is named" : "";
}

} // namespace

int main(int argc, char **argv) {
    const std::vector<std::string_view> words(argv + 1, argv + (argc > 0 ? argc : 1));
    if (const std::optional<int> code = keldrin::answerHelp(keldrin::engineHelp(), words)) {
        return *code;
    }
    CommandLine line;
    const std::string fault = readWords(words, line);
    if (!fault.empty()) {
        Console::fail(fault + "; see rkeldrin --help");
        return keldrin::ExitUsage;
    }
    watchSignals();
    keldrin::flushDenormals();
    Console console(line.quiet);
    keldrin::EngineRun run{line.threads, &stopRequested};
    run.say = [&](std::string_view text) {
        console.say(text);
    };
    run.progress = [&](int done, int total) {
        console.progress(done, total);
    };
    const auto result = keldrin::invertProject(line.project, line.options, run, Console::fail);
    if (result == keldrin::InvertResult::Stopped) {
        Console::fail("stopped; both files are as they were");
    }
    return static_cast<int>(result);
}
