#pragma once

#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// A station number as pages and messages show it: at most three decimals; blank where it is
/// missing.
std::string stationText(double station);

/// What the pages of a line say of a sounding, in one line: station, transmitter where several are
/// there, skipped windows, and the misfit in units of the data errors.
/// sounding  ordinal from 1; blank for another number
std::string soundingText(const SurveyModel &survey, int sounding);

} // namespace keldrin
