#pragma once

#include "model/survey_model.h"

namespace keldrin {

/// True when a control value differs on which the apparent resistivities of the line depend: those
/// that ARes_Survey() reads for the array in force.
bool changesResistivities(const ControlValues &before, const ControlValues &after);

} // namespace keldrin
