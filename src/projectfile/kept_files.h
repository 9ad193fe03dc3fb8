#pragma once

#include "model/source_file.h"

#include <string>
#include <vector>

namespace keldrin {

// What is kept of a project and its model file when they are written over, by this program
// (replace_files.h) or by one that it has started, and under which names. A file is kept under its
// path followed by "~".
//
//   what happens                                             the old file    its model file
//   data of another source than the file are written         kept            moved to "~"
//   a file is written that has changed since it was read     kept            copied to "~"
//   a program failed, and the file is another one now        kept            copied to "~"
//   a program left a file that is not whole, which it was    kept            copied to "~"
//   a file is written that was not whole                     kept            copied to "~"
//   fewer soundings or rows than the file held               kept            copied to "~"
//   anything else                                            nothing is kept
//
// Skip marks that a review had not saved (mark_journal.h) are removed with any write of their
// project, and moved to "~" where the data are of another source.
//
// A file that differs from the new one only in lines that hold a date is never kept. A "~" is
// replaced only by a file with as many data rows; else the next free of "~2~", "~3~" ... is taken.
// Models of another source never stay beside a project, also where that is new.

/// How the file that stands in the place stands to what comes.
enum class Relation {
    Absent,
    Same,    ///< the file as it was read into the model that is written
    Changed, ///< that file, changed since
    Other,   ///< another file
    Left,    ///< as a program has left it that has succeeded or was stopped
    Spoiled, ///< as a program has left it that has failed, not as it was
};

/// What becomes of the model file beside a project.
enum class Models { Stay, Copied, Moved };

/// A file that is, or was, written over.
struct FileChange {
    Relation relation = Relation::Absent;
    FileContent old;
    FileContent next;
};

struct KeepRule {
    bool (*applies)(const FileChange &change);
    Models models;
};

/// The row of the table above that holds; null: nothing is kept.
const KeepRule *keepRuleFor(const FileChange &change);

/// The name under which a file is kept: its path followed by "~" when that is free or holds no more
/// than `rows` data rows, else the next free of "~2~", "~3~" ...
/// examine  counts the rows; without it only a free name is taken
std::string keptName(const std::string &path, int rows,
                     FileContent (*examine)(const std::string &path));

/// What follows the name of a kept file: "~", "~2~" ...; blank for any other path.
std::string_view keptSuffix(std::string_view path);

/// A copy of a file that another program is about to write over. It lies under a free name for kept
/// files, so that it is found whatever happens meanwhile; an equal file that is kept already serves
/// as well.
struct KeptCopy {
    std::string name;    ///< blank: there was no file, or it could not be copied
    std::string failure; ///< why it could not be copied
    bool isNew = false;  ///< it was made, and is gone when nothing is to be kept
};
KeptCopy copyToKeep(const std::string &path);

/// Gives a copy its lasting name, by the rules above.
/// examine  counts its rows
/// changes  its name, unless that fails: it then stays where it is
void settleCopy(KeptCopy &copy, const std::string &path,
                FileContent (*examine)(const std::string &path));

/// Removes a copy that was made.
void dropCopy(const KeptCopy &copy);

} // namespace keldrin
