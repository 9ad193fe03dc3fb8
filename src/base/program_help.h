#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace keldrin {

// What a program says about itself is written once, as data; `--help` and the manual page are two
// ways of setting it. All texts are ASCII, in whole sentences where they are texts.

/// A form of use, an option, a key, a file or an exit code, and what it means.
struct HelpEntry {
    std::string_view term;
    std::string_view text; ///< blank: the term says it all
};

struct HelpSection {
    std::string_view title; ///< in small letters
    std::span<const HelpEntry> entries;
};

struct ProgramHelp {
    std::string_view name;    ///< as it is typed
    std::string_view purpose; ///< one line, without a point
    std::string_view description;
    std::span<const HelpEntry> usage; ///< each form begins with the program's name
    std::span<const HelpSection> sections;
    std::span<const std::string_view> placeholders; ///< words that stand for what the user gives
    std::span<const std::string_view> seeAlso;      ///< programs with a manual page
};

inline constexpr int ExitUsage = 2; ///< of every program: its arguments cannot be used

/// What `--help` prints, in lines of at most 80 characters.
std::string helpText(const ProgramHelp &help);

/// Writes a text to standard output. Exit code: 0, or 1 when it could not be written.
int printText(std::string_view text);

/// Answers the words that ask a program about itself: --help, -h, --version, --help=man, which
/// prints the manual page for the build to install, and --help=CHAPTER, see printManual().
/// words    after the program's name; the first one that asks is answered, up to a "--"
/// returns  none when none asks anything of the kind; else the exit code: 0, or 1 when standard
///          output could not be written; see printManual() too
std::optional<int> answerHelp(const ProgramHelp &help, std::span<const std::string_view> words);

} // namespace keldrin
