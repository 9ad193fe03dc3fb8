#pragma once

#include "model/survey_model.h"
#include "sounding/plot_limits.h"

#include <string_view>

namespace keldrin {

/// True for a sounding that has a page: the ordinal is one, and it has windows.
bool hasSoundingPlot(const SurveyModel &survey, int station);

/// Draws the page of a sounding on a cleared page of 24 by 18 cm: dB/dt and apparent resistivity
/// against time on the left, the layered model against depth on the right, titles and legend.
///
/// Curves, markers and bars are cut off at the frames. Afterwards the view is the page in
/// centimetres and the plot is that of the data, so that PlotFromPage() turns page centimetres
/// into time (msec) and ArcSinh values, and PlotToPage() back.
/// station     ordinal of the sounding, from 1
/// limits      as Plot_AutoLimits() or the user left them
/// file        of the data, with or without a directory; shown without
/// date, time  when the plot was made, shown as they are
/// returns     0, or 1 for a bad ordinal or a sounding without windows, when the page stays as it
///             is. Toolkit errors are reported and stop nothing
int Plot_Sounding(const SurveyModel &survey, const PlotLimits &limits, int station,
                  std::string_view file, std::string_view date, std::string_view time);

} // namespace keldrin
