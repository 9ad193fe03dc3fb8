#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace keldrin {

// What the readers of files must ask somebody. They do not know whom: a program that has a user
// installs the functions at its start. Where one is not set the default is taken, which is said.

/// A file that is optional or not where it was expected.
struct FileQuestion {
    std::string_view filter; ///< a description, a bar, patterns, and a closing bar
    std::string_view title;
};

/// A word that is not one of the names of an enumeration.
struct NameQuestion {
    std::string_view word;
    std::string_view label; ///< of the value
    std::span<const std::string_view> names;
};

/// Who is asked. One per process, see questions().
struct Questions {
    /// path     in: where the file was looked for; out: the file that was chosen
    /// returns  false when none was
    std::function<bool(const FileQuestion &question, std::string &path)> existingFile;
    /// index    in: the first choice, from 1; out: the one that was made
    /// returns  false when none was
    std::function<bool(const NameQuestion &question, int &index)> matchingName;
};

Questions &questions();

/// Asks for an existing file. Without anybody to ask none is chosen, which the log says.
bool askForFile(const FileQuestion &question, std::string &path);

/// Asks which name a word stands for. Without anybody to ask it is the first choice; the caller
/// says what the word was taken for.
bool askForName(const NameQuestion &question, int &index);

} // namespace keldrin
