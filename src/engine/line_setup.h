#pragma once

#include "engine/line_inversion.h"
#include "engine/survey_plans.h"
#include "model/survey_model.h"

#include <vector>

namespace keldrin {

/// The soundings of a project that are inverted, and why others are not.
struct LineChoice {
    std::vector<std::size_t> soundings; ///< of the model, from 0, in the order of the file
    int ofOtherTransmitters = 0;        ///< left out as the writers leave them out
    int refused = 0;                    ///< loop, waveform or windows that cannot be computed
    std::string firstRefusal;           ///< station and reason of the first of these
};

LineChoice chooseSoundings(const SurveyModel &model, const std::vector<SoundingPlan> &plans);

/// What a line starts from.
struct LineStart {
    int fromModelFile = 0; ///< soundings whose model file block gives layers, background and start
    int outOfRange = 0;    ///< of these, with a ResInv that the inversion cannot hold
    int withoutData = 0;   ///< soundings without a usable window
    int layers = 0;        ///< of the first sounding
    double depth = 0.0;    ///< m, down to its last layer's end
};

/// Makes the inversion of the chosen soundings ready: usable data, layers, background, starting
/// models and links. Layers come from the sounding's block in the model file where it has two or
/// more, else from one grid for the line; a line with such blocks lends the layers of the nearest
/// to its other soundings. The background is that of the block, else of the control block, else
/// the half-space that fits best, smoothed by the median of five neighbours.
/// atLeast  layers of a new grid
/// returns  false when the run was stopped
bool prepareLine(const SurveyModel &model, const std::vector<SoundingPlan> &plans,
                 const LineChoice &choice, int atLeast, const EngineRun &run, LineInversion &line,
                 LineStart &start);

/// Puts models, backgrounds, errors and sensitivities of an inverted line into the records.
/// keepModels  leaves those of soundings that had a block in the model file as they were
void storeModels(const LineInversion &line, const LineChoice &choice, bool keepModels,
                 SurveyModel &model);

/// Computes TEMcalc of all windows of the line's soundings.
/// returns  false when the run was stopped
bool storeCalculated(const LineInversion &line, const LineChoice &choice, const EngineRun &run,
                     SurveyModel &model);

} // namespace keldrin
