#pragma once

#include <array>
#include <string>
#include <string_view>

namespace keldrin {

// The manual as it is installed beside the programs: NAME.html and NAME.txt for each chapter.

struct ManualChapter {
    std::string_view name;
    std::string_view title; ///< one line of ASCII
};

inline constexpr std::array ManualChapters = {
    ManualChapter{"index", "What the manual holds"},
    ManualChapter{"first-hour", "From a field file to a section, step by step"},
    ManualChapter{"window", "The window: every dialog, page and key"},
    ManualChapter{"flagging", "Flagging bad windows"},
    ManualChapter{"inversion", "Settings of the inversion, and what each weight does"},
    ManualChapter{"models", "Reading a model: errors, depth of the data, equivalence"},
    ManualChapter{"batch", "Work without a window"},
    ManualChapter{"machines", "Many projects, several machines"},
    ManualChapter{"messages", "Messages: what they mean and what to do"},
    ManualChapter{"physics", "The physics, with formulas"},
    ManualChapter{"formats", "Every file format, column by column"},
    ManualChapter{"keywords", "Keywords of the survey information"},
    ManualChapter{"scenarios", "The language of scenarios"},
};

/// The folder of the manual: what KELDRIN_MANUAL in the environment says, else of the build tree
/// that the running program lies in, or of the place where it is installed. It need not exist.
/// Blank where the system does not give the program's path.
std::string manualFolder();

/// Prints a chapter, or for "list" the names of all.
/// returns  the exit code: 0; 1 when the manual is not installed or standard output could not be
///          written; 2 for a chapter that does not exist, and the names are then on standard error
int printManual(std::string_view program, std::string_view chapter);

} // namespace keldrin
