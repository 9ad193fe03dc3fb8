#pragma once

#include <set>
#include <string>

namespace keldrin {

/// The projects that one run has made, and the names that the messages of failed ones have, so
/// that none of these files is replaced by a later one.
class MadeProjects {
  public:
    /// `base` or, where the run has given DIRECTORY/base.std already, the first free of base_2,
    /// base_3 ... Case does not count: model files are found without regard to it.
    [[nodiscard]] std::string freeBase(const std::string &directory, const std::string &base) const;

    void add(const std::string &project);

  private:
    std::set<std::string> made_; ///< absolute paths in lower case
};

/// Gives a message file of this run its lasting name. A file of that name that this program has
/// not written is the user's own and is kept, as its path with "~" after it; one without a file to
/// replace it stays, while an older one of this program is removed.
/// from     may be missing: nothing was written to it
/// returns  where the user's own file was kept; blank when there was none
/// failure  out: why the file could not get its name; blank when it did
std::string nameMessageFile(const std::string &from, const std::string &to, std::string &failure);

} // namespace keldrin
