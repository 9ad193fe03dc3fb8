#pragma once

#include "model/survey_model.h"
#include "physics/data_fit.h"

#include <array>
#include <cstddef>
#include <vector>

namespace keldrin {

// The line as files for other programs hold it. The soundings are those of the project file, in its
// order: soundings of other transmitters than the selected one of a Fixed-Loop line are left out.

/// A sounding with what is derived from its record.
struct ExportedSounding {
    const ControlValues *control = nullptr;
    const SoundingRecord *record = nullptr;
    int ordinal = 0; ///< from 1, as the review counts
    std::size_t windows = 0;
    std::size_t layers = 0;
    SoundingFit fit = {};
    /// Depths of the layers' edges from the surface down, layers + 1 in use, in LengthUnits to the
    /// thousandth, of which files hold no more
    std::array<double, MaxLayers + 1> edges{};
};

struct ExportedLine {
    const ControlValues *control = nullptr;
    std::vector<ExportedSounding> soundings;
    std::size_t mostWindows = 0; ///< of a sounding
    std::size_t mostLayers = 0;
    int leftOut = 0; ///< soundings
};

/// The line of a model, which must outlive it.
ExportedLine exportedLine(const SurveyModel &model);

} // namespace keldrin
