#include "base/temporary_names.h"

#include "base/file_operations.h"
#include "base/paths.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <string_view>
#include <system_error>

#ifdef _WIN32
#include <process.h>
#else
#include <csignal>
#include <unistd.h>
#endif

namespace keldrin {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view Prefix = ".keldrin-";
constexpr std::string_view Suffix = ".part";
constexpr std::array Suffixes = {Suffix, std::string_view(".log"), std::string_view(".err")};

/// Who made a temporary file. A process number comes back, so the start is needed too.
struct Maker {
    std::string host; ///< letters and digits
    long process = 0;
    long long start = 0; ///< nanoseconds of a clock, read once in a run
};

std::string hostName() {
    std::array<char, 64> name{};
#ifndef _WIN32
    ::gethostname(name.data(), name.size() - 1);
#endif
    std::string host(name.data());
    std::erase_if(host, [](char c) {
        return (c < '0' || c > '9') && (c < 'a' || c > 'z') && (c < 'A' || c > 'Z');
    });
    return host.empty() ? "host" : host;
}

Maker makeSelf() {
    Maker self;
    self.host = hostName();
#ifdef _WIN32
    self.process = ::_getpid();
#else
    self.process = ::getpid();
#endif
    self.start = std::chrono::system_clock::now().time_since_epoch().count();
    return self;
}

const Maker &self() {
    static Maker maker = makeSelf();
#ifndef _WIN32
    if (maker.process != ::getpid()) { // a copy of the process that had asked before
        maker = makeSelf();
    }
#endif
    return maker;
}

/// Takes the text up to the next "-" off the front.
std::string_view takeField(std::string_view &text) {
    const std::size_t end = std::min(text.find('-'), text.size());
    const std::string_view field = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return field;
}

template <class Number>
bool readNumber(std::string_view text, Number &number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && end == text.data() + text.size();
}

bool isTemporaryName(std::string_view name, Maker &maker) {
    const auto suffix = std::find_if(Suffixes.begin(), Suffixes.end(),
                                     [name](std::string_view s) { return name.ends_with(s); });
    if (!name.starts_with(Prefix) || suffix == Suffixes.end()) {
        return false;
    }
    name.remove_prefix(Prefix.size());
    maker.host = takeField(name);
    return readNumber(takeField(name), maker.process) && readNumber(takeField(name), maker.start);
}

bool isGone(const Maker &maker) {
    if (maker.host != self().host) {
        return false; // on a shared disk
    }
    if (maker.process == self().process) {
        return maker.start != self().start;
    }
#ifdef _WIN32
    return false;
#else
    return maker.process > 0 && ::kill(static_cast<pid_t>(maker.process), 0) != 0 && errno == ESRCH;
#endif
}

} // namespace

std::string temporaryName(const std::string &directory) {
    static std::atomic<int> count = 0;
    const Maker &maker = self();
    return joinPath(directory, std::string(Prefix) + maker.host + "-" +
                                   std::to_string(maker.process) + "-" +
                                   std::to_string(maker.start) + "-" + std::to_string(++count) +
                                   std::string(Suffix));
}

void removeLeftOvers(const std::string &directory) {
    std::error_code error;
    for (fs::directory_iterator entry(directory.empty() ? "." : directory, error), end;
         !error && entry != end; entry.increment(error)) {
        Maker maker;
        if (isTemporaryName(entry->path().filename().string(), maker) && isGone(maker)) {
            fileOperations().remove(entry->path().string());
        }
    }
}

} // namespace keldrin
