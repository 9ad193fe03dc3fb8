#include "base/index.h"
#include "program/batch/command.h"

#include "base/paths.h"
#include "physics/ordered_work.h"
#include "shell/engine_lines.h"
#include "shell/invert.h"
#include "toolkit/child_process.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

namespace keldrin {

namespace {

constexpr int MostAtOnce = 256;

struct InvertRequest {
    int threads = 0; ///< of each engine; 0: the processors are shared among the jobs
    int jobs = 1;    ///< engines at a time
    std::vector<std::string> projects;
};

/// What the engine has said of a project.
struct InvertOutcome {
    bool inverted = false;
    std::string summary = {}; ///< "8 iterations, median misfit 0.97, 24 of 24 soundings"
    std::string last = {};    ///< line
    double seconds = 0.0;
};

std::atomic<bool> stopRequested = false;

void requestStop(int /*signal*/) {
    stopRequested.store(true);
}

bool readCount(std::string_view word, int &count) {
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
    return error == std::errc{} && end == word.data() + word.size() && count >= 1 &&
           count <= MostAtOnce;
}

/// Empty when the words can be used, else what is wrong with them.
std::string readRequest(CommandWords words, InvertRequest &request) {
    bool optionsEnded = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i];
        if (optionsEnded || word.substr(0, 2) != "--") {
            request.projects.emplace_back(word);
        } else if (word == "--") {
            optionsEnded = true;
        } else if (word == "--threads" || word == "--jobs") {
            int &count = word == "--jobs" ? request.jobs : request.threads;
            if (++i == words.size() || !readCount(words[i], count)) {
                return std::string(word) + " takes a number from 1 to " +
                       std::to_string(MostAtOnce);
            }
        } else {
            return "unknown option " + std::string(word);
        }
    }
    return request.projects.empty() ? "no project is named" : "";
}

int threadsOfEach(const InvertRequest &request) {
    const auto processors = static_cast<int>(std::thread::hardware_concurrency());
    return request.threads > 0 ? request.threads : std::max(1, processors / request.jobs);
}

InvertOutcome invertOne(const std::string &project, int threads) {
    InvertOutcome outcome;
    ChildWatch watch;
    watch.line = [&outcome](std::string_view line) {
        outcome.last = withoutEngineName(line);
        if (isEngineSummary(line)) {
            outcome.summary = outcome.last;
        }
    };
    watch.goOn = [] {
        return !stopRequested.load();
    };
    const auto begin = std::chrono::steady_clock::now();
    const RunResult result =
        runChild({EngineName, "--threads", std::to_string(threads), "--", project},
                 programDirectory(""), watch);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    outcome.seconds = taken.count();
    outcome.inverted = result.toolkitError == 0 && result.exitCode == 0;
    if (result.toolkitError != 0) {
        outcome.last =
            std::string(EngineName) + " cannot be run: " + std::strerror(result.systemError);
    } else if (result.signal != 0) {
        outcome.last =
            std::string(EngineName) + " was ended by signal " + std::to_string(result.signal);
    } else if (outcome.last.empty()) {
        outcome.last =
            std::string(EngineName) + " ended with code " + std::to_string(result.exitCode);
    }
    if (outcome.summary.empty()) {
        outcome.summary = std::string(EngineName) + " ended without saying how the run went";
    }
    return outcome;
}

void printOutcome(const std::string &project, const InvertOutcome &outcome) {
    if (outcome.inverted) {
        // One decimal, in any locale.
        const long tenths = std::lround(10.0 * outcome.seconds);
        std::printf("%s: %s, %ld.%ld s\n", project.c_str(), outcome.summary.c_str(), tenths / 10,
                    tenths % 10);
    } else {
        std::printf("%s: FAILED: %s\n", project.c_str(), outcome.last.c_str());
    }
    std::fflush(stdout);
}

} // namespace

int invertCommand(CommandWords words) {
    InvertRequest request;
    const std::string fault = readRequest(words, request);
    if (!fault.empty()) {
        std::fprintf(stderr, "keldrin-batch invert: %s\n", fault.c_str());
        return ExitUsage;
    }
    std::signal(SIGTERM, requestStop);
    std::signal(SIGINT, requestStop);
    bool good = true;
    OrderedWork<InvertOutcome> work(
        static_cast<int>(request.projects.size()),
        [&](int item, InvertOutcome &outcome) {
            outcome = stopRequested.load()
                          ? InvertOutcome{.last = "stopped"}
                          : invertOne(request.projects[asIndex(item)], threadsOfEach(request));
        },
        [&](int item, const InvertOutcome &outcome) {
            printOutcome(request.projects[asIndex(item)], outcome);
            good = good && outcome.inverted;
            return true;
        });
    work.run(request.jobs);
    return good ? ExitOk : ExitFailed;
}

} // namespace keldrin
