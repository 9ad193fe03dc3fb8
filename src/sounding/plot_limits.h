#pragma once

#include "base/real.h"
#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// Up to this a window or a layer has no resistivity. ohm-m
inline constexpr float LeastResistivity = 1.0e-6F;

/// How the page of a sounding is drawn.
enum class PageStyle {
    Standard,     ///< all curves on one axis, texts on the plots
    Presentation, ///< an axis for each quantity, texts above the plots, errors and depth of the
                  ///< data
};

/// Axis limits of the sounding plot, its style, and what is drawn behind it. The review keeps one
/// record of them while it runs; the initialisers are the limits of a line without usable values.
struct PlotLimits {
    float PlotTimeMin = 0.01F;           ///< msec, above 0
    float PlotTimeMax = 100.0F;          ///< msec
    float PlotDataMin = 0.0F;            ///< ArcSinh of dB/dt and of apparent resistivity
    float PlotDataMax = ArcSinh(1.0e4F); ///< ArcSinh
    float PlotLogMin = 0.01F;            ///< dB/dt of the logarithmic data axis, above 0
    float PlotLogMax = 1.0e4F;           ///< dB/dt
    bool logData = false;                ///< the data axis is the logarithmic one
    float PlotResMin = 1.0F;             ///< ohm-m of the model, above 0
    float PlotResMax = 1000.0F;          ///< ohm-m
    float PlotDepthMin = -100.0F;        ///< LengthUnits below the surface, negative
    float PlotDepthMax = 0.0F;           ///< the ground surface

    PageStyle style = PageStyle::Standard;
    // Axes of the presentation alone.
    float PlotAResMin = 1.0F;    ///< apparent resistivity, ohm-m, above 0
    float PlotAResMax = 1000.0F; ///< ohm-m
    float PlotMisfitMax = 3.0F;  ///< standard deviations, on both sides of 0

    int neighbours = 0; ///< soundings on each side that are drawn in grey, see neighbour_curves.h
};

/// Sets limits that hold all soundings of the line, so that its pages can be compared: full
/// decades of time, dB/dt and resistivity, and the depth of the deepest layer's lower edge.
///
/// Skipped observations, missing values and numbers that are not finite do not count; where
/// nothing is left, the limits are those of the initialisers. The result allows a plot for any
/// content of the model.
/// limits      replaced, except the style, the kind of the data axis and the neighbours
/// date, time  of this moment, as the page shows them: "DD/MM/YYYY" and "hh:mm:ss"
/// returns     0, or 1 without soundings; not reported
int Plot_AutoLimits(const SurveyModel &survey, PlotLimits &limits, std::string &date,
                    std::string &time);

} // namespace keldrin
