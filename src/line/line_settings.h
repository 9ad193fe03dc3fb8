#pragma once

#include "line/plan_limits.h"

namespace keldrin {

/// What the user has chosen for the pages of a line.
struct LineSettings {
    SectionLimits section = {};
    ProfileLimits profile = {};
    PlanLimits plan = {};
};

} // namespace keldrin
