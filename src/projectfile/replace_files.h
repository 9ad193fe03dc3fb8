#pragma once

#include "base/safe_writer.h"
#include "model/source_file.h"

#include <span>
#include <string>
#include <string_view>

namespace keldrin {

// The one road by which project and model files are written, and the one place that decides what
// is kept of the file that stands there.
//
// The old file keeps on under its path with "~" behind when the new one would lose something:
//
//   what is written                                    the old file    its model file
//   data of another source than the file               kept            moved to "~"
//   the file has changed since it was read             kept            copied to "~"
//   the file was not whole                             kept            copied to "~"
//   fewer soundings or rows than the file holds        kept            copied to "~"
//   the same but for the lines that hold a date        nothing is kept
//   anything else                                      nothing is kept
//
// A "~" is replaced only by a file with as many data rows; else the next free of "~2~", "~3~" ...
// is taken. Models of another source never stay beside a project, also where that is new.

/// First line of the message of a file that could not be written.
inline constexpr std::string_view WriteFailureText = "ERROR while writing KELDRIN file";

/// Tells the user that a file could not be written; blank reasons are left out.
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

/// Replaces files together or not at all, and keeps what the table above says. A failure is
/// reported with the path of the first file, what was kept is told.
/// changes  the sources become the files written; on failure they stay
WriteOutcome replaceFiles(std::span<const FileWrite> files);

/// Writes the files to temporary names and removes them again: proof that they can be written.
/// A failure is reported.
WriteOutcome tryFiles(std::span<const FileWrite> files);

/// A file as the disk holds it now; a blank path when there is none.
SourceFile sourceOf(const std::string &path, const FileContent &content);

/// The name under which a file is kept: its path with "~" behind when that is free or holds no more
/// than `rows` data rows, else the next free of "~2~", "~3~" ...
/// examine  counts the rows; without it only a free name is taken
std::string keptName(const std::string &path, int rows,
                     FileContent (*examine)(const std::string &path));

} // namespace keldrin
