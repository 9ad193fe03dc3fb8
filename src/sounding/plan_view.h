#pragma once

#include "model/survey_model.h"

#include <string_view>

namespace keldrin {

/// Draws the survey as a map on a cleared page: the transmitter loop in red and the soundings as
/// black dots, at equal scale of both axes for the shape of the root window.
///
/// Coordinates are LengthUnits. On a Fixed-Loop line soundings of other transmitters play no part;
/// on a Moving-Loop line the loop is that of the first sounding. A sounding without East or North
/// has no dot, and a loop without a known centre is not drawn; where neither is left there is the
/// title alone.
/// survey   not changed
/// path     the project's; its file name stands in the title
/// returns  0, or 1 without soundings, when the page stays as it is; neither is reported
int Plot_PlanView(const SurveyModel &survey, std::string_view path);

} // namespace keldrin
