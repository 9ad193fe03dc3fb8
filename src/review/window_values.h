#pragma once

#include "model/survey_model.h"
#include "toolkit/table_content.h"

namespace keldrin {

/// The windows of a sounding as a table, a row for each: number, time, width, dB/dt, error, mark,
/// apparent resistivity, calculated dB/dt and misfit, with units in the heads. Numbers are written
/// as the pointer's text of the review has them; what is missing, or no number, is blank.
TableContent windowValues(const ControlValues &control, const SoundingRecord &sounding);

} // namespace keldrin
