#pragma once

#include "base/safe_writer.h"
#include "model/source_file.h"
#include "projectfile/kept_files.h"

#include <span>
#include <string>
#include <string_view>

namespace keldrin {

// The one road by which project and model files are written. What is kept of the file that stands
// there is said in kept_files.h.

/// First line of the message of a file that could not be written.
inline constexpr std::string_view WriteFailureText = "ERROR while writing KELDRIN file";

/// Reports that a file could not be written; blank reasons are left out.
void reportWriteFailure(const std::string &path, const std::string &reason);

/// A project or model file to be written.
struct FileWrite {
    std::string path;
    std::string text;
    FileContent content;                                       ///< of the text
    SourceFile *source = nullptr;                              ///< of the model in memory
    FileContent (*examine)(const std::string &path) = nullptr; ///< counts another file
    std::string models;                       ///< with a project: the path of its model file
    const SourceFile *modelsSource = nullptr; ///< ... and where the models in memory come from
};

/// Replaces files together or not at all, and keeps what kept_files.h says. A failure is reported
/// with the path of the first file; what was kept is reported too.
/// changes  the sources become the files written; on failure they stay
WriteOutcome replaceFiles(std::span<const FileWrite> files);

/// Writes the files to temporary names and removes them again: proof that they can be written.
/// A failure is reported.
WriteOutcome tryFiles(std::span<const FileWrite> files);

/// A file as the disk holds it now; a blank path when there is none.
SourceFile sourceOf(const std::string &path, const FileContent &content);

} // namespace keldrin
