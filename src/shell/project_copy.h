#pragma once

#include "projectfile/kept_files.h"
#include "toolkit/toolkit.h"

#include <string>
#include <vector>

namespace keldrin {

/// A project and its model as they were before the engine, which writes over them and may end at
/// any moment, in the middle of a file too.
///
/// The copies bear the names of kept files, NAME.std~, and are gone when kept_files.h keeps
/// nothing. When the engine has failed or left less by itself, what it left is loaded, the copies
/// stay, and a box says so. When the user has stopped it in the middle of its writing, the copies
/// take the place of the torn files.
class ProjectCopy {
  public:
    /// Copies what there is; a failure is reported, and the project is then as the engine leaves
    /// it.
    explicit ProjectCopy(const std::string &projectPath);

    /// To be called when the engine has ended, before its files are read.
    void settle(const CommandEnd &end);

    /// True when conclude() will say in a box what has become of the project, so that those who
    /// read what is left of it need not.
    [[nodiscard]] bool reportsLoss() const;

    /// To be called when they have been read. Removes the copies or says where they are.
    /// loaded   the project could be read
    /// summary  how the engine says that its run went; blank: nothing. For the status bar, after
    ///          what is said of the copies
    void conclude(bool loaded, const std::string &summary);

  private:
    struct File {
        std::string path;
        KeptCopy copy;
        FileContent before; ///< no rows: there was no file
        FileContent now;    ///< when the engine has ended

        [[nodiscard]] bool isTorn() const;
        [[nodiscard]] bool isGone() const;
        [[nodiscard]] bool isUnchanged() const; ///< byte by byte
    };

    void copyFile(File &file);
    void putBack(const File &file);

    [[nodiscard]] std::string stopText() const;
    [[nodiscard]] std::string causeText() const;
    [[nodiscard]] std::string countsText() const;
    [[nodiscard]] std::vector<std::string> keptNames() const;
    void finishCopies();
    void reportLoss() const;
    void reportEnd(const std::string &words) const;

    File project_;
    File model_;
    CommandEnd end_;
    bool less_ = false; ///< fewer soundings, windows or models than before
    bool torn_ = false; ///< a file is not whole that was
    bool putBack_ = false;
    bool keep_ = false;
};

} // namespace keldrin
