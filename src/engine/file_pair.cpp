#include "engine/file_pair.h"

#include "base/paths.h"
#include "base/safe_writer.h"

#include <fstream>
#include <iterator>
#include <system_error>

namespace keldrin {

bool OldFile::read(const std::string &path, std::string &reason) {
    path_ = path;
    std::error_code error;
    if (!isRegularFile(path)) {
        reason = pathExists(path) ? "it is not a plain file" : "there is no such file";
        return false;
    }
    std::ifstream file(path, std::ios::binary);
    content_.assign(std::istreambuf_iterator<char>(file), {});
    if (!file) {
        reason = "the system refuses to read it";
        return false;
    }
    exists_ = true;
    return true;
}

bool OldFile::readIfPresent(const std::string &path, std::string &reason) {
    path_ = path;
    return !pathExists(path) || read(path, reason);
}

bool OldFile::isUnchanged() const {
    OldFile now;
    std::string reason;
    return now.readIfPresent(path_, reason) && now.exists_ == exists_ && now.content_ == content_;
}

PairResult replacePair(const OldFile &first, const std::string &firstText, const OldFile &second,
                       const std::string &secondText, const EngineRun &run, std::string &reason) {
    for (const OldFile *file : {&first, &second}) {
        if (!file->isUnchanged()) {
            reason = file->path() + " has changed since it was read";
            return PairResult::Failed;
        }
    }
    if (run.stopped()) {
        return PairResult::Stopped;
    }
    if (!writeWholeFile(first.path(), firstText, reason) ||
        !writeWholeFile(second.path(), secondText, reason)) {
        return PairResult::Failed;
    }
    return PairResult::Replaced;
}

} // namespace keldrin
