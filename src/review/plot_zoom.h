#pragma once

#include "review/review_skip.h"
#include "sounding/plot_limits.h"

namespace keldrin {

// Zoomed plots. The limits of the page change, so all that follows the limits follows the zoom: the
// drawing, marks by the mouse, the read-out under it, printing and plot files.

/// Narrows the axes of the plot that a box of the page covers most to what lies in the box. The
/// plots over time share their time; all other axes stay.
/// returns  false, with nothing changed, for a box that meets no plot, or one so narrow that the
///          axis could not be read (0.1 cm of the plot at least)
bool zoomPlot(PlotLimits &limits, const PageBox &box);

/// True when the plot at a place of the page has other axes than in `whole`.
bool isZoomedAt(const PlotLimits &limits, const PlotLimits &whole, float x, float y);

/// Gives the plot at a place of the page the axes of `whole` again.
void unzoomPlot(PlotLimits &limits, const PlotLimits &whole, float x, float y);

/// Axes that the user has set are whole from now on; the others keep their zoom.
void keepSetLimits(PlotLimits &whole, const PlotLimits &before, const PlotLimits &after);

} // namespace keldrin
