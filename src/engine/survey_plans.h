#pragma once

#include "engine/engine_run.h"
#include "engine/response.h"
#include "model/survey_model.h"

#include <vector>

namespace keldrin {

/// One sounding of a project, ready for the forward response.
struct SoundingPlan {
    ResponsePlan plan;                 ///< all NumTW windows of the sounding, skipped ones too
    PlanFault fault = PlanFault::None; ///< not None: there is no plan
    double cosine = 1.0; ///< of the angle from the loop's x axis clockwise to the line
    double sine = 0.0;
};

/// Plans of all soundings of a project. Soundings of equal windows, and soundings of equal
/// geometry, share what they have in common. Receivers are placed as for apparent resistivity, and
/// so are units and window edges; X and Y are computed where a sounding of a fixed or moving loop
/// has one of them switched on. Plans are made on the threads of the run, with progress.
/// Of a run that was stopped some plans are missing.
std::vector<SoundingPlan> planSurvey(const SurveyModel &model, const EngineRun &run = {});

/// Turns the horizontal components from the loop's axes to x along the line and y 90 degrees to the
/// left of it.
inline void turnToLine(const SoundingPlan &plan, double &x, double &y) {
    const double alongX = x * plan.cosine - y * plan.sine;
    y = x * plan.sine + y * plan.cosine;
    x = alongX;
}

} // namespace keldrin
