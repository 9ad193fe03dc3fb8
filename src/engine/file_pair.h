#pragma once

#include "engine/engine_run.h"

#include <string>

namespace keldrin {

/// A file as it was when the run began. What is written later replaces these very bytes, or
/// nothing.
class OldFile {
  public:
    /// Reads a plain file whole. False when that fails; `reason` then says why.
    bool read(const std::string &path, std::string &reason);
    /// The same; a file that is absent counts as read and empty.
    bool readIfPresent(const std::string &path, std::string &reason);

    [[nodiscard]] const std::string &path() const { return path_; }
    [[nodiscard]] const std::string &content() const { return content_; }
    [[nodiscard]] bool exists() const { return exists_; }
    /// True while the file on the disk still holds these bytes, or still is absent.
    [[nodiscard]] bool isUnchanged() const;

  private:
    std::string path_;
    std::string content_;
    bool exists_ = false;
};

enum class PairResult { Replaced, Stopped, Failed };

/// A file and the text that takes its place.
struct FileReplacement {
    const OldFile &old;
    const std::string &text;
    std::string keptAs; ///< second name for the old file; blank: it is not kept
};

/// False when the text is that of the old file.
bool needsWriting(const FileReplacement &file);

/// Writes both files whole to temporary ones, then puts the first and the second in place: both or
/// neither. Nothing is put in place when the run was stopped meanwhile, or when either old file has
/// changed since it was read. A text equal to the old one leaves its file alone.
PairResult replacePair(const FileReplacement &first, const FileReplacement &second,
                       const EngineRun &run, std::string &reason);

} // namespace keldrin
