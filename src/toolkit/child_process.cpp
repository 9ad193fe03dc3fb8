#include "toolkit/child_process.h"

#include "base/paths.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

#ifdef _WIN32
#include <process.h>
#else
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
extern char **environ; // NOLINT: the system's name
#endif

namespace keldrin {

namespace {

#ifdef _WIN32

ChildResult startAndWait(const std::string &program, const std::vector<const char *> &arguments) {
    const auto code = _spawnv(_P_WAIT, program.c_str(), arguments.data());
    return code == -1 ? ChildResult{0, errno} : ChildResult{static_cast<int>(code), 0};
}

#else

int exitCodeOf(int status) {
    constexpr int signalBase = 128;
    return WIFEXITED(status) ? WEXITSTATUS(status) : signalBase + WTERMSIG(status);
}

ChildResult startAndWait(const std::string &program, std::vector<const char *> arguments) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, STDOUT_FILENO);
    pid_t child = 0;
    auto *words = const_cast<char *const *>(arguments.data()); // the call leaves them as they are
    const int error = posix_spawn(&child, program.c_str(), &actions, nullptr, words, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        return {0, error};
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return {0, errno};
        }
    }
    return {exitCodeOf(status), 0};
}

#endif

} // namespace

ChildResult runChild(const std::vector<std::string> &command, const std::string &programDirectory) {
    if (command.empty()) {
        return {0, ENOENT};
    }
    const char *searchPath = std::getenv("PATH");
    const std::optional<std::string> program =
        findProgram(command.front(), searchPath != nullptr ? searchPath : "", programDirectory);
    if (!program) {
        return {0, ENOENT};
    }
    std::vector<const char *> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string &word : command) {
        arguments.push_back(word.c_str());
    }
    arguments.push_back(nullptr);
    return startAndWait(*program, arguments);
}

std::string programDirectory(const std::string &ownPath) {
    if (const std::string_view directory = directoryOf(ownPath); !directory.empty()) {
        return std::string(directory);
    }
    std::error_code error; // found on the search path: the system knows where
    const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? workingDirectory() : own.parent_path().string();
}

} // namespace keldrin
