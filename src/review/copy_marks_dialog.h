#pragma once

#include "toolkit/dialog_form.h"

#include <string>

namespace keldrin {

/// What dialog 123 asks for.
struct CopyMarksAnswers {
    std::string from; ///< the sounding whose marks are copied, in words
    std::string to;   ///< a list of ordinals, see readOrdinalList(); blank: none was given
};

namespace CopyMarksControl {
inline constexpr int From = 4100;
inline constexpr int To = 4101;
inline constexpr int ListHelp = 4102;
} // namespace CopyMarksControl

extern const DialogForm<CopyMarksAnswers> CopyMarksDialog;

} // namespace keldrin
