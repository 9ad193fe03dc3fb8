#pragma once

#include "base/file_operations.h"

#include <array>
#include <cerrno>
#include <functional>
#include <string>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace keldrin {

/// The calls that a test can spoil; see FileOperations.
enum class FileCall { Open, Read, Write, Sync, Close, Rename, Link };
inline constexpr std::array AllFileCalls = {FileCall::Open, FileCall::Read,  FileCall::Write,
                                            FileCall::Sync, FileCall::Close, FileCall::Rename,
                                            FileCall::Link};

enum class FileFault {
    Fails,       ///< the system refuses, the disk has an error
    EndsShort,   ///< a read or write moves one byte; other calls do their work
    EndsProcess, ///< the process is killed before the call
};

/// One spoiled call: the n-th of its kind, from 1.
struct SpoiledCall {
    FileCall call = FileCall::Open;
    FileFault fault = FileFault::Fails;
    int number = 1;

    [[nodiscard]] std::string text() const {
        constexpr std::array calls = {"open", "read", "write", "fsync", "close", "rename", "link"};
        constexpr std::array faults = {"fails", "ends short", "ends the process"};
        return std::string(calls[static_cast<std::size_t>(call)]) + " number " +
               std::to_string(number) + " " + faults[static_cast<std::size_t>(fault)];
    }
};

/// Spoils one call for as long as it lives.
class FailingFiles {
  public:
    static constexpr int KilledCode = 99; ///< exit code of a process that ends at its call

    explicit FailingFiles(const SpoiledCall &spoiled) : spoiled_(spoiled) {
        const FileOperations real = systemFileOperations();
        FileOperations &use = fileOperations();
        use.open = [this, real](const std::string &path, int flags, unsigned mode) {
            return strikes(FileCall::Open) ? refuse() : real.open(path, flags, mode);
        };
        use.read = [this, real](int file, char *to, std::size_t size) -> std::ptrdiff_t {
            const Strike strike = next(FileCall::Read);
            return strike == Strike::Refuse
                       ? refuse()
                       : real.read(file, to, strike == Strike::Short ? 1 : size);
        };
        use.write = [this, real](int file, const char *from, std::size_t size) -> std::ptrdiff_t {
            const Strike strike = next(FileCall::Write);
            return strike == Strike::Refuse
                       ? refuse()
                       : real.write(file, from, strike == Strike::Short ? 1 : size);
        };
        use.sync = [this, real](int file) {
            return strikes(FileCall::Sync) ? refuse() : real.sync(file);
        };
        use.close = [this, real](int file) {
            const bool struck = strikes(FileCall::Close);
            const int result = real.close(file); // it is closed all the same
            return struck ? refuse() : result;
        };
        use.rename = [this, real](const std::string &from, const std::string &to) {
            return strikes(FileCall::Rename) ? refuse() : real.rename(from, to);
        };
        use.link = [this, real](const std::string &from, const std::string &to) {
            return strikes(FileCall::Link) ? refuse() : real.link(from, to);
        };
    }
    FailingFiles(const FailingFiles &) = delete;
    FailingFiles &operator=(const FailingFiles &) = delete;
    ~FailingFiles() { fileOperations() = systemFileOperations(); }

    /// True when there were as many calls that one was spoiled.
    [[nodiscard]] bool struck() const { return struck_; }

  private:
    enum class Strike { None, Refuse, Short };

    Strike next(FileCall call) {
        if (call != spoiled_.call || ++count_ != spoiled_.number) {
            return Strike::None;
        }
        struck_ = true;
#ifndef _WIN32
        if (spoiled_.fault == FileFault::EndsProcess) {
            ::_exit(KilledCode);
        }
#endif
        return spoiled_.fault == FileFault::EndsShort ? Strike::Short : Strike::Refuse;
    }
    bool strikes(FileCall call) {
        return next(call) == Strike::Refuse;
    }

    static int refuse() {
        errno = EIO;
        return -1;
    }

    SpoiledCall spoiled_;
    int count_ = 0;
    bool struck_ = false;
};

/// Runs a flow once for every call that it makes, with that call spoiled.
///
/// prepare  sets the files and the state up; called before every run
/// run      the flow
/// check    looks at what was left and reported; not called for the last run, in which no call was
///          left to be spoiled
/// returns  how many calls were spoiled
inline int spoilEveryCall(FileFault fault, const std::function<void()> &prepare,
                          const std::function<void()> &run,
                          const std::function<void(const SpoiledCall &)> &check) {
    int spoiledCalls = 0;
    for (const FileCall call : AllFileCalls) {
        for (SpoiledCall spoiled{call, fault, 1};; ++spoiled.number) {
            prepare();
            bool struck = false;
            {
                const FailingFiles files(spoiled);
                run();
                struck = files.struck();
            }
            if (!struck) {
                break;
            }
            ++spoiledCalls;
            check(spoiled);
        }
    }
    return spoiledCalls;
}

#ifndef _WIN32
/// The same with a process of its own for every run, which is killed at the call. The check sees
/// the files alone.
inline int killAtEveryCall(const std::function<void()> &prepare, const std::function<void()> &run,
                           const std::function<void(const SpoiledCall &)> &check) {
    int kills = 0;
    for (const FileCall call : AllFileCalls) {
        for (SpoiledCall spoiled{call, FileFault::EndsProcess, 1};; ++spoiled.number) {
            prepare();
            const pid_t child = ::fork();
            if (child == 0) {
                const FailingFiles files(spoiled);
                run();
                ::_exit(0);
            }
            int status = 0;
            ::waitpid(child, &status, 0);
            if (!WIFEXITED(status) || WEXITSTATUS(status) != FailingFiles::KilledCode) {
                break;
            }
            ++kills;
            check(spoiled);
        }
    }
    return kills;
}
#endif

} // namespace keldrin
