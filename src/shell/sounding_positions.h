#pragma once

#include "import/station_file.h"
#include "model/survey_model.h"

namespace keldrin {

/// A station table made from the soundings themselves, for a line without a station file: each
/// stands StnScale per station number along the line azimuth, which becomes 90 when it is unset.
StationTable tableFromSoundings(SurveyModel &model);

/// Gives every sounding its plotted station and fills the coordinates that are missing from the
/// table: East and North along the end segments beyond it, Elevation held flat there.
void positionSoundings(SurveyModel &model, const StationTable &table);

} // namespace keldrin
