#pragma once

#include "model/survey_model.h"
#include "sounding/plot_limits.h"

#include <string>

namespace keldrin {

/// What lies under a place of the sounding page, in one line.
///
/// On the data plot: time, and dB/dt or apparent resistivity by the kind of the nearest point on
/// show; number, value and error of that point's window, and whether it is skipped. On the model
/// plot: resistivity and depth, the elevation where the sounding has one, and the layer there.
/// station  ordinal from 1
/// x, y     centimetres of the page
/// returns  blank outside the plots, and where there is no such sounding or it has no windows
std::string reviewPointerText(const SurveyModel &survey, const PlotLimits &limits, int station,
                              float x, float y);

/// The window, from 1, that the text above is about; 0 where it is about none.
int windowUnder(const SurveyModel &survey, const PlotLimits &limits, int station, float x, float y);

} // namespace keldrin
