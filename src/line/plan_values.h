#pragma once

#include "line/plan_limits.h"
#include "model/survey_model.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

/// Names of the quantities, in the order of PlanQuantity.
std::vector<std::string> planQuantityNames();

/// The values that the dots are coloured by, with the limits of the colours.
struct PlanValues {
    std::string label = {}; ///< of the colour bar; blank: the dots are plain
    std::string unit = {};  ///< shown after the value where no other text gives it; blank: none
    bool logarithmic = false;
    AxisLimits limits = {};
    std::vector<float> values = {}; ///< by dot; missing where there is none
};

/// The values of soundings.
/// limits     an unknown quantity counts as plain dots; limits that cannot be shown are not used
/// soundings  ordinals from 1
PlanValues planValues(const SurveyModel &survey, const PlanLimits &limits,
                      std::span<const int> soundings);

/// Resistivity of the layer at a depth in LengthUnits below the surface, in ohm-m; missing without
/// a model, and below its last layer.
float resistivityAt(const SoundingRecord &sounding, float depth);

} // namespace keldrin
