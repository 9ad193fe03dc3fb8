#pragma once

#include "toolkit/dialog_form.h"

#include <string>
#include <vector>

namespace keldrin {

/// What dialog 106 shows and changes.
struct MatchingLabelAnswers {
    std::string label;              ///< of the value that the word is for
    std::string word;               ///< that is not one of the names
    std::vector<std::string> names; ///< at most 16
    int choice = 1;                 ///< the name that it stands for
};

namespace MatchingLabelControl {
inline constexpr int Title = 1061;
inline constexpr int Word = 1091;
inline constexpr int ListTitle = 1005;
inline constexpr int Names = 1092;
} // namespace MatchingLabelControl

extern const DialogForm<MatchingLabelAnswers> MatchingLabelDialog;

} // namespace keldrin
