#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

/// Changes of files that take place together or not at all.
///
/// Every step takes effect at once and can be taken back until commit(); a transaction that ends
/// without it puts everything back under its own name. A step that fails returns false, failure()
/// says why, and the transaction should be given up.
///
/// Symbolic links are followed to their targets. Temporary files lie beside the file that they
/// stand for, are created exclusively, and bear names that say which process made them; those of
/// processes that are gone are removed by the next transaction in their directory. A process that
/// is killed at any point leaves each file whole, old or new, under its own name.
class FileTransaction {
  public:
    FileTransaction() = default;
    FileTransaction(const FileTransaction &) = delete;
    FileTransaction &operator=(const FileTransaction &) = delete;
    ~FileTransaction();

    /// Writes content to a temporary file beside `path`, with the permissions of the file that it
    /// will replace, flushed and checked. A path that is neither a plain file nor absent, or may
    /// not be written, is refused.
    [[nodiscard]] bool stage(const std::string &path, std::string_view content);

    /// Puts the content that was staged for `path` in its place.
    [[nodiscard]] bool putInPlace(const std::string &path);

    /// Gives the file at `path` the second name `name`, in place of what bears that name.
    [[nodiscard]] bool keepAs(const std::string &path, const std::string &name);

    /// Removes the file at `path`.
    [[nodiscard]] bool takeAway(const std::string &path);

    /// Flushes the directories, after which nothing is taken back.
    [[nodiscard]] bool commit();

    /// Undoes every step, the last one first. Called by the destructor; failure() says when a file
    /// could not be put back, and where it is.
    void takeBack();

    [[nodiscard]] const std::string &failure() const { return failure_; }

  private:
    /// A file that is written and not yet in its place.
    struct Staged {
        std::string target;
        std::string temporary;
    };
    /// A name that a step gave another file, or none.
    struct Step {
        std::string path;
        std::string before; ///< a second name of what it was; blank: there was nothing
    };

    bool fail(std::string why);
    bool failWithCode();
    bool writeTemporary(const std::string &name, std::string_view content, unsigned mode);
    bool noteStep(const std::string &path);
    bool secondName(const std::string &path, std::string &name);
    void takeBackStep(const Step &step);
    void saveUnderFreeName(const Step &step);
    bool flushDirectories();
    void removeTemporaries();
    std::string newName(const std::string &beside);

    std::vector<Staged> staged_;
    std::vector<std::string> temporaries_; ///< to be removed at the end
    std::vector<Step> steps_;
    std::vector<std::string> directories_; ///< that steps have changed
    std::string failure_;
};

/// The file that a chain of symbolic links ends in, which need not exist.
std::string linkTarget(const std::string &path);

} // namespace keldrin
