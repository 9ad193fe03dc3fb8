#pragma once

#include "model/survey_model.h"

#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

/// A line of the title page.
struct TitleRow {
    std::string label;
    std::string value;
};

/// A group of lines under a heading.
struct TitleGroup {
    std::string heading;
    std::vector<TitleRow> rows; ///< those that have a value
};

/// What the title page says of a survey: survey, loop, waveform, counts, inversion, models.
std::vector<TitleGroup> titleGroups(const SurveyModel &survey, std::string_view path);

/// The name of the survey: its job or, without one, its file.
std::string reportTitle(const SurveyModel &survey, std::string_view path);

/// Draws the title page on a cleared surface.
void drawTitlePage(const SurveyModel &survey, std::string_view path);

} // namespace keldrin
