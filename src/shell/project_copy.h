#pragma once

#include "model/source_file.h"
#include "toolkit/toolkit.h"

#include <string>

namespace keldrin {

/// A project and its model as they were before the engine, which writes over them and may end at
/// any moment, in the middle of a file too.
///
/// The copy lies beside the project as a project of its own, NAME.before-inversion.std, so that it
/// can be opened. It is gone when the engine has succeeded and left as much as it found, whole.
/// When it has failed or left less by itself, what it left is loaded, the copy stays, and a box
/// says so. When the user has stopped it in the middle of its writing, the copy takes the place of
/// the torn files.
class ProjectCopy {
  public:
    /// Copies what there is; a failure is logged, and the project is then as the engine leaves it.
    explicit ProjectCopy(const std::string &projectPath);

    /// To be called when the engine has ended, before its files are read.
    void settle(const CommandEnd &end);

    /// To be called when they have been read. Removes the copy or tells where it is.
    /// loaded  the project could be read
    void conclude(bool loaded);

  private:
    struct File {
        std::string path;
        std::string copy;   ///< blank: there was no file, or it could not be copied
        FileContent before; ///< no rows: there was no file
        FileContent now;    ///< when the engine has ended

        [[nodiscard]] bool isTorn() const;
        [[nodiscard]] bool isUnchanged() const; ///< byte by byte
    };

    void copyFile(File &file);
    void putBack(const File &file);

    void tellStop() const;
    [[nodiscard]] std::string countsText() const;
    void tellLoss() const;

    File project_;
    File model_;
    CommandEnd end_;
    bool less_ = false; ///< fewer soundings, windows or models than before
    bool torn_ = false; ///< a file is not whole that was
    bool putBack_ = false;
    bool keep_ = false;
};

} // namespace keldrin
