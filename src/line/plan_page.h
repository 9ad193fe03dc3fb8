#pragma once

#include "line/line_page.h"
#include "line/line_settings.h"
#include "model/survey_model.h"

#include <string_view>

namespace keldrin {

/// The plan page: the soundings of the line on a map with station numbers as close as they can be
/// read, the loop of the first sounding with its name, and an arrow to grid north.
///
/// Coordinates are LengthUnits, at equal scale of both axes for the shape of the root window, and
/// for that of the page where it is drawn on paper. A sounding without East or North, or of another
/// transmitter than the project's, is left out.
/// survey  must outlive the page
/// path    of the project; its file name stands on the page
LinePage makePlanPage(const SurveyModel &survey, const LineSettings &settings,
                      std::string_view path);

/// Asks the user for the limits of the plan. True when they were confirmed.
bool editPlanLimits(const SurveyModel &survey, LineSettings &settings);

} // namespace keldrin
