#include "engine/file_pair.h"

#include "base/file_operations.h"
#include "base/file_transaction.h"
#include "base/paths.h"

#include <array>

namespace keldrin {

namespace {

bool put(FileTransaction &transaction, const FileReplacement &file) {
    const std::string &path = file.old.path();
    return (file.keptAs.empty() || transaction.keepAs(path, file.keptAs)) &&
           transaction.putInPlace(path);
}

} // namespace

bool OldFile::read(const std::string &path, std::string &reason) {
    path_ = path;
    exists_ = readWholeFile(path, content_, reason);
    return exists_;
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

bool needsWriting(const FileReplacement &file) {
    return !file.old.exists() || file.text != file.old.content();
}

PairResult replacePair(const FileReplacement &first, const FileReplacement &second,
                       const EngineRun &run, std::string &reason) {
    FileTransaction transaction;
    const std::array<const FileReplacement *, 2> files = {&first, &second};
    for (const FileReplacement *file : files) {
        if (needsWriting(*file) && !transaction.stage(file->old.path(), file->text)) {
            reason = transaction.failure();
            return PairResult::Failed;
        }
    }
    for (const FileReplacement *file : files) {
        if (!file->old.isUnchanged()) {
            reason = file->old.path() + " has changed since it was read";
            return PairResult::Failed;
        }
    }
    if (run.stopped()) {
        return PairResult::Stopped;
    }
    bool placed = true;
    for (const FileReplacement *file : files) {
        placed = placed && (!needsWriting(*file) || put(transaction, *file));
    }
    if (!placed || !transaction.commit()) {
        transaction.takeBack();
        reason = transaction.failure();
        return PairResult::Failed;
    }
    return PairResult::Replaced;
}

} // namespace keldrin
