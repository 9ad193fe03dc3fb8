#pragma once

#include "model/survey_model.h"

#include <string>
#include <string_view>

namespace keldrin {

/// Where a sounding stands in its line: "4 of 24  Stn 1150"; without the station where it is
/// missing.
/// sounding  ordinal, 1 to the count
std::string placeText(const SurveyModel &survey, int sounding);

/// The sounding that a number typed by the user means: that of this station, the first where
/// several stand there, else the one of this ordinal. 0 where it is neither, or no number.
int soundingNamed(const SurveyModel &survey, std::string_view typed);

} // namespace keldrin
