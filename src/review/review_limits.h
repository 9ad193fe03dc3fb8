#pragma once

#include "model/survey_model.h"
#include "sounding/plot_limits.h"

namespace keldrin {

/// Lets the user change the limits of the sounding plot (dialog 103). dB/dt is shown and typed as
/// it is and kept as ArcSinh; of the two data axes it is the one on show.
///
/// A field that holds no number, or one that no axis can show (not above 0 where the axis is
/// logarithmic), keeps its old value. Then a maximum below its minimum is swapped with it, and a
/// range that is too small is widened at its maximum: to a decade of time or resistivity, to 1.0 of
/// dB/dt or depth. An axis that is not touched keeps every bit, however narrow it was zoomed. A
/// pair that would still allow no plot, for want of digits, stays as it was.
///
/// survey   gives the units of the labels
/// returns  0, or 1 on Cancel with nothing changed
int Review_EditLimits(const SurveyModel &survey, PlotLimits &limits);

} // namespace keldrin
