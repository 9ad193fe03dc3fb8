#include "toolkit/child_process.h"

#include "base/paths.h"
#include "toolkit/console_lines.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <system_error>

#ifdef _WIN32
#include <process.h>
#else
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
extern char **environ; // NOLINT: the system's name
#endif

namespace keldrin {

namespace {

RunResult cannotRun(int systemError) {
    return {0, ErrorCannotRun, systemError};
}

#ifdef _WIN32

// Without the watch: the child keeps its console and runs to its end.
RunResult runWatched(const std::string &program, const std::vector<const char *> &arguments,
                     const ChildWatch & /*watch*/) {
    const auto code = _spawnv(_P_WAIT, program.c_str(), arguments.data());
    return code == -1 ? cannotRun(errno) : RunResult{static_cast<int>(code)};
}

#else

using Clock = std::chrono::steady_clock;

constexpr auto Grace = std::chrono::seconds(2); ///< from the request to end to the kill
constexpr int LongestPause = 50;                ///< msec between two looks at the child
constexpr std::size_t MostAtOnce = 65536;       ///< bytes of output between two looks
constexpr std::size_t MostInPipe = 1048576;     ///< bytes that a system lets a pipe hold

/// A file descriptor that closes itself.
class Descriptor {
  public:
    Descriptor() = default;
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor() { close(); }

    void open(int number) { number_ = number; }
    void close() {
        if (isOpen()) {
            ::close(number_);
            number_ = -1;
        }
    }
    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }

  private:
    int number_ = -1;
};

/// A child process, its console and whoever watches it.
class Child {
  public:
    explicit Child(const ChildWatch &watch) : watch_(watch), lines_(watch.line) {}

    /// Returns the system's error code, 0 when the child has started.
    int start(const std::string &program, const std::vector<const char *> &arguments);
    RunResult serve();

  private:
    int makeConsole(Descriptor &writeEnd);
    void awaitOutput();
    void takeOutput(std::size_t most);
    [[nodiscard]] bool hasEnded() const;
    void askToEnd();
    void killWhenDue();
    RunResult result();

    const ChildWatch &watch_;
    ConsoleLines lines_;
    Descriptor console_; ///< what the child writes; closed once nobody can write any more
    pid_t process_ = 0;  ///< and the number of its process group
    int pause_ = 1;      ///< msec; grows while nothing happens
    std::optional<Clock::time_point> killAt_; ///< set when the child was asked to end
    bool killed_ = false;
};

int Child::makeConsole(Descriptor &writeEnd) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        return errno;
    }
    console_.open(ends[0]);
    writeEnd.open(ends[1]);
    ::fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    ::fcntl(ends[1], F_SETFD, FD_CLOEXEC);
    ::fcntl(ends[0], F_SETFL, O_NONBLOCK);
    return 0;
}

// The child leads a process group of its own, so that all that it starts can be ended with it. Such
// a group must not read from a terminal, hence the empty input.
int Child::start(const std::string &program, const std::vector<const char *> &arguments) {
    Descriptor writeEnd;
    if (const int error = makeConsole(writeEnd); error != 0) {
        return error;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, writeEnd.number(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, writeEnd.number(), STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    auto *words = const_cast<char *const *>(arguments.data()); // the call leaves them as they are
    const int error =
        posix_spawn(&process_, program.c_str(), &actions, &attributes, words, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

// A child may close its console long before its end, and what it leaves running may hold it open
// long after, so its end is looked for too.
void Child::awaitOutput() {
    pollfd console{console_.number(), POLLIN, 0};
    const bool ready = ::poll(&console, console_.isOpen() ? 1 : 0, pause_) > 0;
    pause_ = ready ? 1 : std::min(2 * pause_, LongestPause);
}

void Child::takeOutput(std::size_t most) {
    std::array<char, 16384> bytes{};
    while (most > 0 && console_.isOpen()) {
        const ssize_t got = ::read(console_.number(), bytes.data(), std::min(most, bytes.size()));
        if (got > 0) {
            lines_.take({bytes.data(), static_cast<std::size_t>(got)});
            most -= static_cast<std::size_t>(got);
        } else if (got < 0 && errno == EAGAIN) {
            return;
        } else if (got == 0 || errno != EINTR) {
            console_.close();
        }
    }
}

// Without taking note of the end, so that the numbers of process and group stay the child's.
bool Child::hasEnded() const {
    siginfo_t end{};
    const int status =
        ::waitid(P_PID, static_cast<id_t>(process_), &end, WEXITED | WNOHANG | WNOWAIT);
    return status == 0 ? end.si_pid != 0 : errno != EINTR;
}

void Child::askToEnd() {
    killAt_ = Clock::now() + Grace;
    ::kill(-process_, SIGTERM);
}

void Child::killWhenDue() {
    if (!killed_ && Clock::now() >= *killAt_) {
        killed_ = true;
        ::kill(-process_, SIGKILL);
    }
}

RunResult Child::serve() {
    for (;;) {
        awaitOutput();
        takeOutput(MostAtOnce);
        const bool ended = hasEnded();
        const bool goOn = !watch_.goOn || watch_.goOn();
        if (killAt_) {
            killWhenDue();
        } else if (!goOn && !ended) {
            askToEnd();
        }
        // When it was asked to end, children of its own that still write get their time too.
        if (ended && (!killAt_ || killed_ || !console_.isOpen())) {
            return result();
        }
    }
}

RunResult Child::result() {
    takeOutput(MostInPipe); // a child that is left running may go on writing for ever
    lines_.finish();
    if (killAt_) {
        ::kill(-process_, SIGKILL); // what is left of its group
    }
    int status = 0;
    while (::waitpid(process_, &status, 0) < 0) {
        if (errno != EINTR) {
            return cannotRun(errno);
        }
    }
    constexpr int signalBase = 128;
    RunResult result;
    result.signal = WIFEXITED(status) ? 0 : WTERMSIG(status);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : signalBase + result.signal;
    result.stopped = killAt_.has_value();
    return result;
}

RunResult runWatched(const std::string &program, const std::vector<const char *> &arguments,
                     const ChildWatch &watch) {
    Child child(watch);
    const int error = child.start(program, arguments);
    return error != 0 ? cannotRun(error) : child.serve();
}

#endif

} // namespace

RunResult runChild(const std::vector<std::string> &command, const std::string &programDirectory,
                   const ChildWatch &watch) {
    if (command.empty()) {
        return cannotRun(ENOENT);
    }
    const std::optional<std::string> program =
        findProgram(command.front(), IOsVariable("PATH"), programDirectory);
    if (!program) {
        return cannotRun(ENOENT);
    }
    std::vector<const char *> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string &word : command) {
        arguments.push_back(word.c_str());
    }
    arguments.push_back(nullptr);
    return runWatched(*program, arguments, watch);
}

std::string programDirectory(const std::string &ownPath) {
    if (const std::string_view directory = directoryOf(ownPath); !directory.empty()) {
        return std::string(directory);
    }
    return executableDirectory(); // found on the search path: the system knows where
}

} // namespace keldrin
