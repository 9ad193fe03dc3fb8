#pragma once

#include "model/survey_model.h"
#include "sounding/plot_limits.h"

namespace keldrin {

// Skip marks by the mouse. Positions are centimetres on the page of 24 by 18, which shows the
// sounding within `limits`. Afterwards the plot in force is that of the data.
//
// A window has one mark, which its points share: dB/dt, apparent resistivity and, on the page for
// presentation, misfit. A window without an observed value that lies in the searched range of time
// is marked by any action, also by one that clears. On the page for presentation only points that
// are on show count, in the plot of the click or in those that the box meets.

/// A rectangle on the page; the low corner is the lower left one.
struct PageBox {
    float xLow = 0.0F;
    float yLow = 0.0F;
    float xHigh = 0.0F;
    float yHigh = 0.0F;
};

// What is done with marks: the lowest bit decides.
inline constexpr int SetMark = -1;
inline constexpr int ClearMark = 0;

/// Sets or clears the mark of the window whose point is nearest to a click on the page, among the
/// points within `radius` of it in both directions. Of points equally near the earliest counts,
/// dB/dt before apparent resistivity.
/// station  ordinal from 1
/// returns  0, also when no point was there; 1, with nothing changed, for a bad ordinal, a sounding
///          without windows or a click that is not inside a plot of data. Not reported
int Review_SkipPoint(SurveyModel &model, const PlotLimits &limits, int station, int flag, float x,
                     float y, float radius);

/// Sets or clears the marks of all windows that have a point in a box, its edges included.
/// returns  0; 1, with nothing changed, for a bad ordinal or a box wholly outside the plots of data
int Review_SkipBox(SurveyModel &model, const PlotLimits &limits, int station, int flag,
                   const PageBox &box);

} // namespace keldrin
