#pragma once

#include "model/survey_model.h"
#include "sounding/plot_limits.h"

#include <string_view>

namespace keldrin {

/// What a page of a sounding says of itself.
struct SoundingPage {
    int station = 1;       ///< ordinal of the sounding, from 1
    std::string_view file; ///< of the data, with or without a directory
    std::string_view date; ///< when the plot was made
    std::string_view time;
};

/// Draws the page for presentation on a page that beginReviewPage() has cleared.
///
/// dB/dt, apparent resistivity and misfit against time stand below each other, each on an axis of
/// its own; beside them the layers as steps, with the band of their errors, faded below the depth
/// that the data see. Texts and legends stand above the frames. Skipped windows are rings.
void drawPresentationPage(const SurveyModel &survey, const PlotLimits &limits,
                          const SoundingPage &page);

} // namespace keldrin
