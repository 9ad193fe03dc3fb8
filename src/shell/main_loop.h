#pragma once

#include "model/survey_model.h"

namespace keldrin {

/// The whole program: opens the root window and the log, starts with a file, then serves the menu
/// until Exit or a close request. The toolkit must have been started; never returns.
[[noreturn]] void runProgram(SurveyModel &model);

/// Size of the root window on a screen, in pixels.
struct RootSize {
    int width = 0;
    int height = 0;
};
RootSize rootWindowSize(int screenWidth, int screenHeight);

} // namespace keldrin
